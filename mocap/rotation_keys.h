#pragma once

#include <cstdint>

#include "math/rotation_batch.h"
#include "mocap/mocap_model.h"

// The keys of a node's three rotation channels: read as the factors of a product, the first acting
// first, and written as x, y and z angles. Both name the same three arrays, each in its own order.
struct RotationKeys {
    MOCAP_RAWKEY* factor[3] = {};
    MOCAP_RAWKEY* axis[3] = {};

    // Rx * Ry * Rz: slots are told by their types, not by their places in the list.
    static RotationKeys ByType(const MOCAPMODEL::CHANNELS* const* list);

    // Replaces the values of every frame, in degrees.
    void Convert(std::uint32_t frameCount, const RotationProduct& product) const;
};
