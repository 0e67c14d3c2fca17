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

// Returns the one of the two quaternions that is nearer to `before`, the quaternion of the frame
// before, so that an interpolation between the two frames turns the short way. In the first frame
// `before` is all zeros; then the result is QuaternionOf(axes).
Quaternion QuaternionNear(const double axes[3][3], const Quaternion& before);

}  // namespace exporters
