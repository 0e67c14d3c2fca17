#include "export/scene_angles.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace exporters {
namespace {

constexpr double kDegrees = 180.0 / std::numbers::pi;
// If the cosine of y is smaller, rounding errors decide x and z alone, although their sum or
// difference is certain.
constexpr double kLockedCosine = 1e-7;

// Like std::round, which is a call of the C library for processors without SSE4.1. Only the largest
// double below a half becomes 1, and the result is never -0.0.
double Rounded(double number) {
    constexpr double kWhole = 4503599627370496.0;  // 2^52: larger numbers are whole
    if (!(std::abs(number) < kWhole)) return number;
    return static_cast<double>(static_cast<std::int64_t>(number + std::copysign(0.5, number)));
}

// The angle that differs from `angle` by whole turns and is nearest to `before`.
double Unwound(double angle, double before) {
    return angle + 360.0 * Rounded((before - angle) / 360.0);
}

SceneAngles Unwound(const SceneAngles& angles, const SceneAngles& before) {
    return {Unwound(angles[0], before[0]), Unwound(angles[1], before[1]),
            Unwound(angles[2], before[2])};
}

double Distance(const SceneAngles& a, const SceneAngles& b) {
    return std::abs(a[0] - b[0]) + std::abs(a[1] - b[1]) + std::abs(a[2] - b[2]);
}

// Whether y is 90 or -90 degrees, apart from whole turns.
bool IsLocked(double y) {
    return std::abs(std::abs(std::remainder(y, 360.0)) - 90.0) < kDegrees * kLockedCosine;
}

}  // namespace

SceneAngles FastAnglesOf(const double axes[3][3]) {
    const double cosine = std::hypot(axes[0][0], axes[0][1]);
    const double y = kDegrees * std::atan2(-axes[0][2], cosine);
    if (cosine < kLockedCosine) return {0.0, y, kDegrees * std::atan2(-axes[1][0], axes[1][1])};
    return {kDegrees * std::atan2(axes[1][2], axes[2][2]), y,
            kDegrees * std::atan2(axes[0][1], axes[0][0])};
}

SceneAngles AnglesNear(const SceneAngles& angles, const SceneAngles& before) {
    if (angles[0] == 0.0 && IsLocked(angles[1])) {
        // Only z - x is certain if y is 90 degrees, and only z + x if it is -90 degrees.
        const double x = before[0];
        const bool isUp = std::remainder(angles[1], 360.0) > 0.0;
        const double z = isUp ? angles[2] + x : angles[2] - x;
        return Unwound({x, angles[1], z}, before);
    }
    const SceneAngles same = Unwound(angles, before);
    const SceneAngles other =
        Unwound({angles[0] + 180.0, 180.0 - angles[1], angles[2] + 180.0}, before);
    return Distance(other, before) < Distance(same, before) ? other : same;
}

}  // namespace exporters
