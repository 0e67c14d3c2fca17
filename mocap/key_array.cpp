#include "mocap/key_array.h"

#include <algorithm>
#include <new>

#include "memory/large_memory.h"

namespace {

// The values of several channels are allocated in one block of about this size. Larger blocks cost
// less time. Smaller blocks can be freed sooner, because a block is freed when all its channels are
// finished.
constexpr std::size_t kPieceBytes = std::size_t{8} << 20;
constexpr std::uint64_t kLineNumbers = 8;  // how many numbers a cache line has

// Returns memory for `count` numbers in one block, or null when memory runs out.
KeyArray::Numbers AllocatePiece(std::uint64_t count) {
    const std::uint64_t bytes = count * sizeof(double);
    if (bytes > static_cast<std::uint64_t>(PTRDIFF_MAX)) return nullptr;
    try {
        const std::shared_ptr<void> piece =
            memory::AllocateLargeMemory(static_cast<std::size_t>(bytes));
        return KeyArray::Numbers(piece, static_cast<double*>(piece.get()));
    } catch (const std::bad_alloc&) {
        return nullptr;  // shared_ptr could not allocate its reference count
    }
}

// Returns how many numbers the first number of an array is after that of the array before it. The
// arrays begin with a cache line, so that two threads that write to different arrays, or to
// different lines of one array, do not disturb each other. The number of lines is odd, so that the
// same frame of many channels is not in the same set of the cache.
std::uint64_t StepFor(std::uint32_t count) {
    const std::uint64_t lines = (std::uint64_t{count} + kLineNumbers - 1) / kLineNumbers;
    return (lines | 1) * kLineNumbers;
}

}  // namespace

KeyArray::Numbers AllocateNumbers(std::uint32_t count) {
    return AllocatePiece(count);
}

KeyArray AllocateKeys(std::uint32_t count) {
    KeyArray::Numbers times = AllocateNumbers(count);
    KeyArray::Numbers values = AllocateNumbers(count);
    if (!times || !values) return {};
    return {std::move(times), std::move(values)};
}

std::vector<KeyArray> AllocateKeyArrays(std::uint32_t arrays, std::uint32_t count,
                                        const KeyArray::Numbers& times) {
    const std::uint64_t step = StepFor(count);
    const auto perPiece =
        static_cast<std::size_t>(std::max<std::uint64_t>(kPieceBytes / (step * sizeof(double)), 1));
    std::vector<KeyArray> keys;
    keys.reserve(arrays);
    while (keys.size() < arrays) {
        const std::size_t here = std::min(perPiece, arrays - keys.size());
        // The last array of a block needs no numbers after its own.
        const KeyArray::Numbers piece = AllocatePiece((here - 1) * step + count);
        if (!piece) return {};
        for (std::size_t i = 0; i < here; ++i)
            keys.emplace_back(times, KeyArray::Numbers(piece, piece.get() + i * step));
    }
    return keys;
}
