// Rotations as the three angles of a BVH row.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

struct BvhAngles {
    double z = 0.0, x = 0.0, y = 0.0;  // degrees
};

// Some angles that turn back into axes, and whether two of the axes fall together, so that y and z
// are not told apart.
struct PlainAngles {
    BvhAngles angles;
    bool locked = false;
};
PlainAngles AnglesOf(const double axes[3][3]);
// The same for many, in few steps; within rounding.
void AnglesOf(std::span<const headless::Transform> turned, std::span<PlainAngles> out);

// The angles that turn back into `axes` (row vectors; y turns first, then x, then z) to 1e-14,
// where two of the axes fall together too. Of all of them the ones nearest to `before`, the frame
// before, so that they run on beyond 180 degrees without a jump.
BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before);
// The same where AnglesOf was asked already.
BvhAngles AnglesNear(const PlainAngles& plain, const double axes[3][3], const BvhAngles& before);

}  // namespace exporters
