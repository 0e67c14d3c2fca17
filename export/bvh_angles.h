// Rotations as the three angles of a BVH row.
// Internal to export/.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

struct BvhAngles {
    double z = 0.0, x = 0.0, y = 0.0;  // degrees
};

// One of the sets of angles of a rotation; none at gimbal lock, where y and z cannot be told apart.
struct PlainAngles {
    BvhAngles angles;
    bool locked = false;  // at gimbal lock: the angles mean nothing
};
PlainAngles AnglesOf(const double axes[3][3]);
// The same for many at once, by vector instructions; the last bits may differ.
void AnglesOf(std::span<const headless::Transform> turned, std::span<PlainAngles> out);

// The angles that turn back into `axes` (row vectors; y turns first, then x, then z) to 1e-14,
// at gimbal lock too. Of all such angles the ones nearest to `before`, those of the frame before,
// so that they go on beyond 180 degrees without a jump.
BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before);
// The same, given `plain`, the result of AnglesOf(axes).
BvhAngles AnglesNear(const PlainAngles& plain, const double axes[3][3], const BvhAngles& before);

}  // namespace exporters
