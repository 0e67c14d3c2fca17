#include "mocap/rotation_keys.h"

#include <algorithm>

RotationKeys RotationKeys::ByType(const MOCAPMODEL::CHANNELS* const* list) {
    RotationKeys keys;
    for (int i = 0; i < 3; ++i)
        keys.factor[list[i]->type - kRotationX] = list[i]->keys.get();
    std::copy_n(keys.factor, 3, keys.axis);
    return keys;
}

void RotationKeys::Convert(std::uint32_t frameCount, const RotationProduct& product) const {
    RotationBlock block = {};
    for (std::size_t first = 0; first < frameCount; first += kRotationBlock) {
        const std::size_t count = std::min<std::size_t>(kRotationBlock, frameCount - first);
        for (int i = 0; i < 3; ++i)
            for (std::size_t lane = 0; lane < count; ++lane)
                block.angle[i][lane] = factor[i][first + lane].value;
        ConvertRotations(block, product, count);
        for (int i = 0; i < 3; ++i)
            for (std::size_t lane = 0; lane < count; ++lane)
                axis[i][first + lane].value = block.angle[i][lane];
    }
}
