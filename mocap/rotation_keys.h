#pragma once

#include <cstdint>

#include "math/rotation_batch.h"
#include "mocap/mocap_model.h"

// The keys of a node's three rotation channels. Convert reads them as the three rotations of a
// product, of which the first acts first. It writes them as x, y and z angles. `factor` and `axis`
// point to the same three arrays. `factor[0]` is the rotation that acts first. `axis[0]` gets the x
// angles, `axis[1]` the y angles and `axis[2]` the z angles.
struct RotationKeys {
    MOCAP_RAWKEY* factor[3] = {};
    MOCAP_RAWKEY* axis[3] = {};

    // Returns the keys for the product Rx * Ry * Rz. The three slots in `list` may be in any order,
    // because the type of a slot gives its axis.
    static RotationKeys ByType(const MOCAPMODEL::CHANNELS* const* list);

    // Replaces the three values of every frame by those of the converted rotation. Values are in
    // degrees.
    void Convert(std::uint32_t frameCount, const RotationProduct& product) const;
};
