// Converts rotations to the three angles of a BVH row.
// Internal to export/.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

struct BvhAngles {
    double z = 0.0, x = 0.0, y = 0.0;  // degrees
};

// The angles of a rotation: z and y are from -180 to 180 degrees, x is from -90 to 90 degrees. If x
// is 90 or -90 degrees (gimbal lock), y and z cannot be told apart. `isGimbalLocked` is then set,
// and the angles have no meaning.
struct PrincipalAngles {
    BvhAngles angles;
    bool isGimbalLocked = false;
};
PrincipalAngles AnglesOf(const double axes[3][3]);
// Converts the rotation of each of `transforms`. `out` must have the same size. Because this
// function uses vector instructions, the last bits of its results may differ from those of the
// function above.
void AnglesOf(std::span<const headless::Transform> transforms, std::span<PrincipalAngles> out);

// Converts the rotation matrix `axes`, which is for row vectors, to angles. y turns first, then x,
// then z. The rotation by the angles is equal to `axes` to within 1e-14, also at gimbal lock.
// Several sets of angles give the same rotation. This function returns the set that is nearest to
// `before`, the angles in the previous frame. The angles therefore do not jump when a joint turns
// beyond 180 degrees.
BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before);
// Does the same for a caller that already has `principal`, the result of AnglesOf(axes).
BvhAngles AnglesNear(const PrincipalAngles& principal, const double axes[3][3],
                     const BvhAngles& before);

}  // namespace exporters
