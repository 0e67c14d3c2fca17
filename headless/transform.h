// Rigid placements, for row vectors (p' = p * M): in a * b, a acts first.
#pragma once

#include <array>

#include "host/export.h"

namespace headless {

struct Transform {
    double axes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};  // rows: where x, y and z point
    double origin[3] = {0, 0, 0};
};

ZELK_API Transform operator*(const Transform& a, const Transform& b);
ZELK_API Transform Inverse(const Transform& rigid);
// posx posy posz, rotx roty rotz in degrees: x turns first, then y, then z; the translation last.
ZELK_API Transform FromLocal(const std::array<double, 6>& local);
// The angles, in degrees, that reproduce the axes to 1e-15, at gimbal lock too.
ZELK_API std::array<double, 3> AnglesOf(const double axes[3][3]);

}  // namespace headless
