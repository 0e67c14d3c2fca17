// Converts rotations that are listed in any order to angles about x, y and z, in many frames at a
// time, with vector instructions.
#pragma once

#include <array>
#include <cstddef>

#include "math/pose_lanes.h"

namespace math {

// The rotation of each lane is the product of rotations about the first `count` of `axes` (0 for
// x), the outermost first; `listed` has their angles. Sets `angles` to angles of the same rotation
// about x, y and z, where the rotation about x acts first. x and z are from -180 to 180 degrees, y
// is from -90 to 90. Sets `cosines` to the cosines of y. Where a cosine is below 1e-14, the angles
// have no meaning; of a lane with a listed angle that is not below 1e9 degrees, it is 0. The other
// rotations are the same to within 1e-14. All lanes are computed, so unused lanes must be set, too.
void AnglesOfListed(const std::array<std::size_t, 3>& axes, std::size_t count,
                    const AngleLanes& listed, AngleLanes& angles, double (&cosines)[kPoseLanes]);

}  // namespace math
