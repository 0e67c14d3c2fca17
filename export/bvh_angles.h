// Converts rotations to the three angles of a BVH row.
// Internal to export/.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

struct BvhAngles {
    double z = 0.0, x = 0.0, y = 0.0;  // degrees
};

// The angles of a rotation with z and y from -180 to 180 degrees and x from -90 to 90 degrees. At
// gimbal lock, where x is 90 or -90 degrees, y and z cannot be told apart: `isGimbalLocked` is set
// and the angles have no meaning.
struct PrincipalAngles {
    BvhAngles angles;
    bool isGimbalLocked = false;
};
PrincipalAngles AnglesOf(const double axes[3][3]);
// Converts the rotation of each of `transforms`; `out` has the same size. The vector instructions
// may give other last bits than the function above.
void AnglesOf(std::span<const headless::Transform> transforms, std::span<PrincipalAngles> out);

// The angles that give `axes` again, to 1e-14, at gimbal lock too. `axes` are for row vectors; y
// turns first, then x, then z. Many sets of angles give the same rotation; this is the set nearest
// to `before`, the angles of the frame before, so that a joint that turns beyond 180 degrees has no
// jump in its angles.
BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before);
// The same if `principal`, the result of AnglesOf(axes), is already known.
BvhAngles AnglesNear(const PrincipalAngles& principal, const double axes[3][3],
                     const BvhAngles& before);

}  // namespace exporters
