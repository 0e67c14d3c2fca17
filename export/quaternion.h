#pragma once

namespace exporters {

// A unit quaternion; x, y, z, w is the order in which files hold it.
struct Quaternion {
    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};

// The rotation that takes the axes of the coordinate system to the rows of `axes`. Of the two
// quaternions the one with w >= 0.
Quaternion QuaternionOf(const double axes[3][3]);

}  // namespace exporters
