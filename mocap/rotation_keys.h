#pragma once

#include <cstdint>

#include "math/rotation_batch.h"
#include "mocap/mocap_model.h"

// The keys of a node's three rotation channels. They are read as the factors of a product, of which
// the first acts first, and written as x, y and z angles. `factor` and `axis` name the same three
// arrays, each in its own order.
struct RotationKeys {
    MOCAP_RAWKEY* factor[3] = {};
    MOCAP_RAWKEY* axis[3] = {};

    // The keys for the product Rx * Ry * Rz. The order of the slots in `list` does not matter;
    // their types say which axis they belong to.
    static RotationKeys ByType(const MOCAPMODEL::CHANNELS* const* list);

    // Replaces the values of every frame. Values are degrees.
    void Convert(std::uint32_t frameCount, const RotationProduct& product) const;
};
