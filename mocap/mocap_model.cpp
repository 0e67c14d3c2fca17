#include "mocap/mocap_model.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>

#include "memory/large_memory.h"

namespace {

// The keys of several channels are allocated in one block of about this size. Larger blocks cost
// less time. Smaller blocks can be freed sooner, because a block is freed when all its channels are
// finished.
constexpr std::size_t kPieceBytes = std::size_t{8} << 20;

// Returns memory for `arrays` arrays of `count` keys in one block, or null when memory runs out.
std::shared_ptr<void> AllocatePiece(std::size_t arrays, std::uint32_t count) {
    const std::uint64_t bytes = std::uint64_t{arrays} * count * sizeof(MOCAP_RAWKEY);
    if (bytes > static_cast<std::uint64_t>(PTRDIFF_MAX)) return nullptr;
    try {
        return memory::AllocateLargeMemory(static_cast<std::size_t>(bytes));
    } catch (const std::bad_alloc&) {
        return nullptr;  // shared_ptr could not allocate its reference count
    }
}

KeyArray PartOf(const std::shared_ptr<void>& piece, std::size_t firstKey) {
    return KeyArray(piece, static_cast<MOCAP_RAWKEY*>(piece.get()) + firstKey);
}

}  // namespace

KeyArray AllocateKeys(std::uint32_t count) {
    const std::shared_ptr<void> piece = AllocatePiece(1, count);
    return piece ? PartOf(piece, 0) : KeyArray();
}

std::vector<KeyArray> AllocateKeyArrays(std::uint32_t arrays, std::uint32_t count) {
    const std::uint64_t bytes = std::max<std::uint64_t>(count, 1) * sizeof(MOCAP_RAWKEY);
    const auto perPiece = static_cast<std::size_t>(std::max<std::uint64_t>(kPieceBytes / bytes, 1));
    std::vector<KeyArray> keys;
    keys.reserve(arrays);
    while (keys.size() < arrays) {
        const std::size_t here = std::min(perPiece, arrays - keys.size());
        const std::shared_ptr<void> piece = AllocatePiece(here, count);
        if (!piece) return {};
        for (std::size_t i = 0; i < here; ++i)
            keys.push_back(PartOf(piece, i * count));
    }
    return keys;
}

std::unique_ptr<char[]> CopyText(const char* text, const char* tail) {
    const std::size_t length = std::strlen(text);
    const std::size_t tailLength = std::strlen(tail);
    std::unique_ptr<char[]> copy(new (std::nothrow) char[length + tailLength + 1]);
    if (copy) {
        std::memcpy(copy.get(), text, length);
        std::memcpy(copy.get() + length, tail, tailLength + 1);
    }
    return copy;
}

MOCAPMODEL::CHANNELS* FindChannel(MOCAPMODEL& node, std::uint8_t type) {
    if (type == kEmptySlot && node.channels.begin() == nullptr) return &node.channels[0];
    const auto found = std::find_if(std::begin(node.channels), std::end(node.channels),
                                    [type](const auto& slot) { return slot.type == type; });
    return found == std::end(node.channels) ? nullptr : found;
}

bool IsAnimated(const MOCAPMODEL& node) {
    return std::any_of(std::begin(node.channels), std::end(node.channels),
                       [](const auto& slot) { return IsAnimated(slot.type); });
}
