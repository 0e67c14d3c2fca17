#pragma once

#include <cstdint>

#include "math/rotation_batch.h"
#include "mocap/mocap_model.h"

// The keys of a node's three rotation channels. Convert reads them as the three rotations of a
// product, of which the first acts first. It writes them as x, y and z angles. `factor` and `axis`
// point to the same three arrays: `factor` in the order of the product, `axis` in the order in
// which x, y and z are written.
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
