#include "mocap/mocap_model.h"

#include <algorithm>
#include <cstring>
#include <new>

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
