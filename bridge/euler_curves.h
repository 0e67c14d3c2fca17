// Turns quaternions into curves of angles.
// Internal to bridge/.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace bridge {

// Curves of the angles rotx, roty, rotz in degrees, as headless::FromLocal combines them.
using AngleCurves = std::array<std::vector<double>, 3>;

// `quaternions` points to the first of `frames` quaternions (x, y, z, w), each of which begins
// `step` numbers after the one before. They need not have unit length, but must not be zero. Each
// rotation has several triples of angles. In every frame after the first, the curves have the one
// that is nearest to the frame before, so that they do not jump by whole or half turns.
AngleCurves AngleCurvesOf(const double* quaternions, std::size_t frames, std::size_t step);

}  // namespace bridge
