// Puts transforms into the lanes of blocks.
// Internal to export/.
#pragma once

#include <cstddef>

#include "headless/transform.h"
#include "math/pose_lanes.h"

namespace exporters {

// Of the rotation's two quaternions, the lane gets the one that QuaternionOf returns.
void PutPose(const headless::Transform& transform, std::size_t lane, math::PoseLanes& pose);
void PutInAllLanes(const headless::Transform& transform, math::PoseLanes& pose);
// Applies a rotation to the poses, as pose * rotation. If the elements of its matrix are 0, 1 and
// -1, positions stay exact.
void TurnPoses(const headless::Transform& rotation, math::PoseLanes& poses);

}  // namespace exporters
