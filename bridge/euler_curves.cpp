#include "bridge/euler_curves.h"

#include <algorithm>
#include <cmath>

#include "headless/transform.h"

namespace bridge {
namespace {

using Angles = std::array<double, 3>;

constexpr double kHalfTurn = 180.0;
constexpr double kTurn = 360.0;

// Sets the rows of the transform to the axes of the coordinate system, turned by the quaternion.
void PutAxes(const double* q, headless::Transform& transform) {
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    const double factor = 2.0 / (x * x + y * y + z * z + w * w);
    const double axes[3][3] = {
        {1.0 - factor * (y * y + z * z), factor * (x * y + w * z), factor * (x * z - w * y)},
        {factor * (x * y - w * z), 1.0 - factor * (x * x + z * z), factor * (y * z + w * x)},
        {factor * (x * z + w * y), factor * (y * z - w * x), 1.0 - factor * (x * x + y * y)}};
    std::copy_n(&axes[0][0], 9, &transform.axes[0][0]);
}

// Adds whole turns, so that each angle is within half a turn of the one before.
Angles Unwrapped(const Angles& angles, const Angles& before) {
    Angles result;
    for (std::size_t axis = 0; axis < 3; ++axis)
        result[axis] = angles[axis] + kTurn * std::round((before[axis] - angles[axis]) / kTurn);
    return result;
}

double Distance(const Angles& a, const Angles& b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

// Returns the angles of the same rotation that are nearest to `before`.
Angles Nearest(const Angles& angles, const Angles& before) {
    const Angles same = Unwrapped(angles, before);
    const Angles other =
        Unwrapped({angles[0] + kHalfTurn, kHalfTurn - angles[1], angles[2] + kHalfTurn}, before);
    return Distance(other, before) < Distance(same, before) ? other : same;
}

}  // namespace

AngleCurves AngleCurvesOf(const double* quaternions, std::size_t frames, std::size_t step) {
    AngleCurves curves;
    for (std::vector<double>& curve : curves)
        curve.resize(frames);
    headless::Transform transform;
    Angles before{};
    for (std::size_t frame = 0; frame < frames; ++frame) {
        PutAxes(quaternions + frame * step, transform);
        const Angles angles = headless::AnglesOf(transform.axes);
        before = frame == 0 ? angles : Nearest(angles, before);
        for (std::size_t axis = 0; axis < 3; ++axis)
            curves[axis][frame] = before[axis];
    }
    return curves;
}

}  // namespace bridge
