#include "app/export/bvh_angles.h"

#include <cmath>

namespace app {
namespace {

constexpr double kDegreesPerRadian = 57.29577951308232;
// Below this cosine of x nothing tells z from y.
constexpr double kGimbalLock = 1e-15;

// `angle`, a number of whole turns nearer to `before`.
double Unrolled(double angle, double before) {
    const double turns = (before - angle) / 360.0;
    return std::abs(turns) <= 0.5 ? angle : angle + 360.0 * std::nearbyint(turns);
}

double Distance(const BvhAngles& a, const BvhAngles& b) {
    return std::abs(a.z - b.z) + std::abs(a.x - b.x) + std::abs(a.y - b.y);
}

BvhAngles Unrolled(const BvhAngles& angles, const BvhAngles& before) {
    return {Unrolled(angles.z, before.z), Unrolled(angles.x, before.x),
            Unrolled(angles.y, before.y)};
}

}  // namespace

BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before) {
    const double cosineOfX = std::sqrt(axes[1][0] * axes[1][0] + axes[1][1] * axes[1][1]);
    double cosineOfZ, sineOfZ;
    if (cosineOfX > kGimbalLock) {
        cosineOfZ = axes[1][1] / cosineOfX;
        sineOfZ = -axes[1][0] / cosineOfX;
    } else {
        cosineOfZ = std::cos(before.z / kDegreesPerRadian);
        sineOfZ = std::sin(before.z / kDegreesPerRadian);
    }
    // The columns of the rest once the turn about z is undone; they say y and x exactly, however
    // little z was worth.
    const double cosineOfY = axes[0][0] * cosineOfZ + axes[0][1] * sineOfZ;
    const double sineOfY = axes[2][0] * cosineOfZ + axes[2][1] * sineOfZ;
    const double signedCosineOfX = axes[1][1] * cosineOfZ - axes[1][0] * sineOfZ;
    const BvhAngles angles{std::atan2(sineOfZ, cosineOfZ) * kDegreesPerRadian,
                           std::atan2(axes[1][2], signedCosineOfX) * kDegreesPerRadian,
                           std::atan2(sineOfY, cosineOfY) * kDegreesPerRadian};
    const BvhAngles first = Unrolled(angles, before);
    const BvhAngles flipped{angles.z + 180.0, 180.0 - angles.x, angles.y + 180.0};
    const BvhAngles second = Unrolled(flipped, before);
    return Distance(second, before) < Distance(first, before) ? second : first;
}

}  // namespace app
