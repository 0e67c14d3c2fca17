#pragma once

#include <cstdint>

#include "math/rotation_batch.h"
#include "mocap/mocap_model.h"

// The values of a node's three rotation channels, in degrees. There are three arrays of values.
// `factor` and `axis` point to the same three arrays, but the order may differ. Convert reads
// `factor`: the rotation of `factor[0]` acts first, and that of `factor[2]` acts last. Convert then
// writes to `axis`: `axis[0]` gets the x angles, `axis[1]` the y angles and `axis[2]` the z angles.
struct RotationKeys {
    double* factor[3] = {};
    double* axis[3] = {};

    // Returns the values in the order x, y, z, both in `factor` and in `axis`. So the rotation
    // about x acts first. The three slots in `list` may be in any order, because the type of a slot
    // gives its axis.
    static RotationKeys ByType(const MOCAPMODEL::CHANNELS* const* list);

    // The same arrays without the first `frames` values.
    RotationKeys From(std::uint32_t frames) const;

    // Replaces the three values of every frame by those of the converted rotation. Values are in
    // degrees.
    void Convert(std::uint32_t frameCount, const RotationProduct& product) const;
};
