// Computes the poses of a joint in many frames at a time, with vector instructions. A pose is a
// position and a unit quaternion, which turns a point by q * p * conjugate(q).
#pragma once

#include <cstddef>

namespace math {

// The number of frames in a block.
inline constexpr std::size_t kPoseLanes = 64;

// The poses of one joint, one in each lane. All lanes are computed, so unused lanes must be set,
// too. Any value will do for them.
struct PoseLanes {
    alignas(64) double position[3][kPoseLanes];
    alignas(64) double rotation[4][kPoseLanes];  // x, y, z, w
};

// Three angles in each lane, in degrees.
struct AngleLanes {
    alignas(64) double angle[3][kPoseLanes];
};

// Sets the rotation of each lane to that by the three angles; x turns first, then y, then z. The
// components are within 1e-15 of the exact ones, and exact if all angles are multiples of 180
// degrees. Which of the rotation's two quaternions it is depends on the angles of that lane alone.
void TurnByAngles(const AngleLanes& angles, PoseLanes& pose);

// Computes the pose of a child as its parent's parent sees it: `local` is the child as seen from
// its parent, `parent` is the parent. The quaternions of the result have length 1 to within 1e-15.
// `global` must be another object than `parent` and `local`.
void AttachPoses(const PoseLanes& parent, const PoseLanes& local, PoseLanes& global);

// Sets cosines[i], for each lane i but the first, to the scalar product of the quaternions of the
// lanes i and i - 1. cosines[0] becomes 1.
void CompareNeighbours(const PoseLanes& pose, double (&cosines)[kPoseLanes]);

// The cosine of the angle y below which x and z cannot be told apart.
inline constexpr double kLockedCosine = 1e-9;

// Sets the angles of each lane to those of its rotation; x turns first, then y, then z. x and z are
// from -180 to 180 degrees, y is from -90 to 90. The rotation by the angles is that of the pose to
// within 1e-8 degrees. If the cosine of y is below kLockedCosine (gimbal lock), z is 0.
void AnglesOf(const PoseLanes& pose, AngleLanes& angles);

// The same for the order of BVH files: y turns first, then x, then z. x is from -90 to 90 degrees.
// Sets `cosines` to the cosine of x; where it is below kLockedCosine, z is 0.
void BvhAnglesOf(const PoseLanes& pose, AngleLanes& angles, double (&cosines)[kPoseLanes]);

// Whether all numbers of all lanes are finite.
bool AreFinite(const PoseLanes& pose);

// The same as TurnByAngles for one lane, without vector instructions.
void TurnByAngles(const double degrees[3], double quaternion[4]);

}  // namespace math
