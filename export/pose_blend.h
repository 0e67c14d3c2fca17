// Interpolates between two poses.
// Internal to export/.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

// Moves each transform of `from` the fraction `part` (0 to 1) of the way to the transform of `to`
// with the same index. Origins move along a straight line. Rotations turn at a constant rate the
// short way (spherical linear interpolation of quaternions, Shoemake 1985).
void BlendPoses(std::span<headless::Transform> from, std::span<const headless::Transform> to,
                double part);

}  // namespace exporters
