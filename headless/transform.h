// Rigid transforms: a rotation, then a translation. They apply to row vectors (p' = p * M), so in
// a * b, a acts first.
#pragma once

#include <array>

#include "host/export.h"

namespace headless {

struct Transform {
    double axes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};  // rows: the rotated x, y and z axis
    double origin[3] = {0, 0, 0};                           // the translation, in scene units
};

ZELK_API Transform operator*(const Transform& a, const Transform& b);
ZELK_API Transform Inverse(const Transform& rigid);
// `local` is posx, posy, posz in scene units and rotx, roty, rotz in degrees, as in Object::local.
// x rotates first, then y, then z; the translation comes last.
ZELK_API Transform FromLocal(const std::array<double, 6>& local);
// The angles rotx, roty, rotz in degrees, from which FromLocal computes the same axes to within
// 1e-15, also at gimbal lock.
ZELK_API std::array<double, 3> AnglesOf(const double axes[3][3]);

}  // namespace headless
