#include "mocap/rotation_jobs.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "threads/for_each.h"
#include "threads/thread_count.h"

namespace {

// A file may have very many nodes with few frames. Then not all of their conversions are in memory
// at the same time.
constexpr std::size_t kMostJobs = 4096;
// A thread converts so many frames of a node at a time. This is a multiple of kRotationBlock.
constexpr std::uint32_t kPartFrames = 16 * kRotationBlock;
// A rotation takes about as long as so many bytes of text.
constexpr std::uint64_t kBytesPerRotation = 8;

}  // namespace

RotationJobs::Job::Job(const RotationKeys& jobKeys, const RotationProduct& product)
    : keys(jobKeys), hasBefore(product.before != nullptr), hasAfter(product.after != nullptr) {
    std::copy_n(product.axis, 3, axis);
    if (hasBefore) std::memcpy(before, product.before, sizeof(before));
    if (hasAfter) std::memcpy(after, product.after, sizeof(after));
}

void RotationJobs::Job::Convert(std::uint32_t first, std::uint32_t count) const {
    RotationProduct product;
    std::copy_n(axis, 3, product.axis);
    if (hasBefore) product.before = before;
    if (hasAfter) product.after = after;
    keys.From(first).Convert(count, product);
}

void RotationJobs::Add(const RotationKeys& keys, const RotationProduct& product) {
    jobs_.emplace_back(keys, product);
    if (jobs_.size() == kMostJobs) Run();
}

void RotationJobs::Run() noexcept {
    const std::size_t parts = (std::size_t{frameCount_} + kPartFrames - 1) / kPartFrames;
    const std::uint64_t rotations = std::uint64_t{frameCount_} * jobs_.size();
    threads::ForEach(jobs_.size() * parts, threads::CountFor(rotations * kBytesPerRotation),
                     [&](std::size_t index) {
                         const auto first = static_cast<std::uint32_t>(index % parts) * kPartFrames;
                         const std::uint32_t count = std::min(kPartFrames, frameCount_ - first);
                         jobs_[index / parts].Convert(first, count);
                     });
    jobs_.clear();
}
