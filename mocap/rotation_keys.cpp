#include "mocap/rotation_keys.h"

#include <algorithm>

RotationKeys RotationKeys::ByType(const MOCAPMODEL::CHANNELS* const* list) {
    RotationKeys keys;
    for (int i = 0; i < 3; ++i)
        keys.factor[list[i]->type - kRotationX] = list[i]->keys.Values().get();
    std::copy_n(keys.factor, 3, keys.axis);
    return keys;
}

RotationKeys RotationKeys::From(std::uint32_t frames) const {
    RotationKeys keys = *this;
    for (int i = 0; i < 3; ++i) {
        keys.factor[i] += frames;
        keys.axis[i] += frames;
    }
    return keys;
}

void RotationKeys::Convert(std::uint32_t frameCount, const RotationProduct& product) const {
    RotationBlock block = {};
    for (std::size_t first = 0; first < frameCount; first += kRotationBlock) {
        const std::size_t count = std::min<std::size_t>(kRotationBlock, frameCount - first);
        for (int i = 0; i < 3; ++i)
            std::copy_n(factor[i] + first, count, block.angle[i]);
        ConvertRotations(block, product, count);
        for (int i = 0; i < 3; ++i)
            std::copy_n(block.angle[i], count, axis[i] + first);
    }
}
