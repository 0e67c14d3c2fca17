// Rotations as quaternions.
// Internal to export/.
#pragma once

namespace exporters {

// A unit quaternion; x, y, z, w is the order in which files hold it.
struct Quaternion {
    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};

// The rotation that turns the axes of the coordinate system to the rows of `axes`. Of the two
// quaternions the one with w >= 0.
Quaternion QuaternionOf(const double axes[3][3]);

// Of the two quaternions the one nearer to `before`, that of the frame before, so that what is
// interpolated between the two turns the short way; QuaternionOf where both are equally near, as
// before the first frame, for which `before` is all zeros.
Quaternion QuaternionNear(const double axes[3][3], const Quaternion& before);

}  // namespace exporters
