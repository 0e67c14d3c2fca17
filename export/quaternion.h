// Converts rotations to quaternions.
// Internal to export/.
#pragma once

namespace exporters {

// A unit quaternion. Files store its components in the order x, y, z, w.
struct Quaternion {
    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};

// The quaternion of the rotation that turns the axes of the coordinate system into the rows of
// `axes`. Each rotation has two quaternions; this is the one with w >= 0.
Quaternion QuaternionOf(const double axes[3][3]);

// Returns whichever of the rotation's two quaternions is nearer to `before`, the quaternion of
// the previous frame. An interpolation between the two frames then turns the short way. For the
// first frame the caller passes zeros in `before`, and the result is QuaternionOf(axes).
Quaternion QuaternionNear(const double axes[3][3], const Quaternion& before);

// Sets the rows of `axes` to the axes of the coordinate system, turned by the quaternion. The
// quaternion need not have unit length, but must not be zero.
void PutAxes(const Quaternion& q, double axes[3][3]);

}  // namespace exporters
