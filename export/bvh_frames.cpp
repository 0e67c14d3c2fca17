#include "export/bvh_frames.h"

#include <algorithm>

#include "export/launch.h"

namespace exporters {
namespace {

// The size of a block. It is so large that the cost of starting a thread does not matter, and still
// small compared with a long motion.
constexpr std::size_t kBlockBytes = std::size_t{1} << 19;

}  // namespace

BvhFrames::BvhFrames(const ExportedMotion& motion, const headless::Transform& rootTurn)
    : motion_(motion), rootTurn_(rootTurn), joints_(motion.Joints().size()) {
    const std::size_t jointBytes = sizeof(headless::Transform) + sizeof(PrincipalAngles);
    framesInBlock_ =
        std::max<std::size_t>(kBlockBytes / (std::max<std::size_t>(joints_, 1) * jointBytes), 1);
    for (std::size_t ahead = 1; ahead <= kAhead; ++ahead)
        Start(blocks_[ahead]);
}

BvhFrames::~BvhFrames() {
    for (Block& block : blocks_)
        if (block.work.valid()) block.work.wait();
}

BvhFrames::Frame BvhFrames::Next() {
    if (IsCurrentUsedUp()) {
        Start(blocks_[current_]);
        current_ = (current_ + 1) % blocks_.size();
        blocks_[current_].work.get();
        frameInBlock_ = 0;
    }
    const Block& block = blocks_[current_];
    const std::size_t first = joints_ * frameInBlock_++;
    return {std::span(block.locals).subspan(first, joints_),
            std::span(block.angles).subspan(first, joints_)};
}

void BvhFrames::Start(Block& block) {
    const std::size_t first = startedFrames_;
    block.frames = std::min(framesInBlock_, motion_.Times().frames.size() - first);
    startedFrames_ += block.frames;
    block.locals.resize(joints_ * block.frames);
    block.angles.resize(joints_ * block.frames);
    block.work = std::async(kLaunch, [this, &block, first] { Fill(block, first); });
}

void BvhFrames::Fill(Block& block, std::size_t first) const {
    ExportedMotion::Scratch scratch;
    const std::vector<double>& frames = motion_.Times().frames;
    for (std::size_t frame = 0; frame < block.frames; ++frame) {
        const auto locals = std::span(block.locals).subspan(joints_ * frame, joints_);
        motion_.Locals(frames[first + frame], locals, scratch);
        if (joints_ > 0) locals[0] = locals[0] * rootTurn_;
        AnglesOf(locals, std::span(block.angles).subspan(joints_ * frame, joints_));
    }
}

}  // namespace exporters
