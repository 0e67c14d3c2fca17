#include "export/bvh_angles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "math/angles.h"

// This declaration tells g++ that the C library has a vectorised atan2.
#if defined(__x86_64__) && defined(__GLIBC__) && !defined(__clang__)
extern "C" __attribute__((__simd__("notinbranch"))) double atan2(double, double) noexcept;
#endif

namespace exporters {
namespace {

using math::kDegreesPerRadian;
using math::kFullTurn;
using math::kHalfTurn;

// If the cosine of the angle x is not above this, y and z cannot be told apart.
constexpr double kGimbalLock = 1e-15;

// Adds whole turns to `angle` until it is as near to `before` as possible. All are in degrees.
double Unrolled(double angle, double before) {
    const double step = before - angle;
    if (std::abs(step) <= kHalfTurn) return angle;
    return angle + kFullTurn * std::nearbyint(step / kFullTurn);
}

double Distance(const BvhAngles& a, const BvhAngles& b) {
    return std::abs(a.z - b.z) + std::abs(a.x - b.x) + std::abs(a.y - b.y);
}

BvhAngles Unrolled(const BvhAngles& angles, const BvhAngles& before) {
    return {Unrolled(angles.z, before.z), Unrolled(angles.x, before.x),
            Unrolled(angles.y, before.y)};
}

// The sines and cosines of the angles z, x and y, in this order. The sine and the cosine of one
// angle may both be multiplied by the same factor above zero, which does not change the arc tangent
// of their quotient.
struct SinesAndCosines {
    double sine[3];
    double cosine[3];
};

SinesAndCosines PartsAround(const double axes[3][3], double sineOfZ, double cosineOfZ) {
    // x and y are computed from what remains of `axes` after the turn about z is undone. They
    // therefore correct for an error in z: the three angles together give `axes` again.
    return {{sineOfZ, axes[1][2], axes[2][0] * cosineOfZ + axes[2][1] * sineOfZ},
            {cosineOfZ, axes[1][1] * cosineOfZ - axes[1][0] * sineOfZ,
             axes[0][0] * cosineOfZ + axes[0][1] * sineOfZ}};
}

// Returns false at gimbal lock and does not change `parts` then.
bool PartsOf(const double axes[3][3], SinesAndCosines& parts) {
    const double cosineOfX = std::sqrt(axes[1][0] * axes[1][0] + axes[1][1] * axes[1][1]);
    if (!(cosineOfX > kGimbalLock)) return false;
    parts = PartsAround(axes, -axes[1][0] / cosineOfX, axes[1][1] / cosineOfX);
    return true;
}

BvhAngles AnglesFrom(const SinesAndCosines& parts) {
    return {std::atan2(parts.sine[0], parts.cosine[0]) * kDegreesPerRadian,
            std::atan2(parts.sine[1], parts.cosine[1]) * kDegreesPerRadian,
            std::atan2(parts.sine[2], parts.cosine[2]) * kDegreesPerRadian};
}

// The number of joints that are computed together.
constexpr std::size_t kBatch = 32;
// One value for each angle of each joint in a batch: first z for all joints, then x, then y.
using Lanes = double[3 * kBatch];

// This loop is a function without branches so that the compiler vectorises it.
[[gnu::noinline]] void ArcTangents(const Lanes& sines, const Lanes& cosines, Lanes& degrees) {
    for (std::size_t i = 0; i < 3 * kBatch; ++i)
        degrees[i] = atan2(sines[i], cosines[i]) * kDegreesPerRadian;
}

void AnglesOfBatch(std::span<const headless::Transform> transforms,
                   std::span<PrincipalAngles> out) {
    Lanes sines = {};
    Lanes cosines = {};
    for (std::size_t i = 0; i < transforms.size(); ++i) {
        SinesAndCosines parts{};
        out[i].isGimbalLocked = !PartsOf(transforms[i].axes, parts);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            sines[axis * kBatch + i] = parts.sine[axis];
            cosines[axis * kBatch + i] = parts.cosine[axis];
        }
    }
    Lanes degrees;
    ArcTangents(sines, cosines, degrees);
    for (std::size_t i = 0; i < transforms.size(); ++i)
        out[i].angles = {degrees[i], degrees[kBatch + i], degrees[2 * kBatch + i]};
}

}  // namespace

PrincipalAngles AnglesOf(const double axes[3][3]) {
    SinesAndCosines parts{};
    if (!PartsOf(axes, parts)) return {{}, true};
    return {AnglesFrom(parts), false};
}

void AnglesOf(std::span<const headless::Transform> transforms, std::span<PrincipalAngles> out) {
    for (std::size_t first = 0; first < transforms.size(); first += kBatch) {
        const std::size_t count = std::min(kBatch, transforms.size() - first);
        AnglesOfBatch(transforms.subspan(first, count), out.subspan(first, count));
    }
}

BvhAngles AnglesNear(const PrincipalAngles& principal, const double axes[3][3],
                     const BvhAngles& before) {
    BvhAngles angles = principal.angles;
    if (principal.isGimbalLocked)
        angles = AnglesFrom(PartsAround(axes, std::sin(before.z / kDegreesPerRadian),
                                        std::cos(before.z / kDegreesPerRadian)));
    const BvhAngles first = Unrolled(angles, before);
    // The rotation has one other set of angles, apart from whole turns. It differs from `first` by
    // at least half a turn in z and in y. If `first` is within half a turn of `before`, the other
    // set is therefore not nearer.
    if (Distance(first, before) <= kHalfTurn) return first;
    const BvhAngles flipped{angles.z + kHalfTurn, kHalfTurn - angles.x, angles.y + kHalfTurn};
    const BvhAngles second = Unrolled(flipped, before);
    return Distance(second, before) < Distance(first, before) ? second : first;
}

BvhAngles AnglesNear(const double axes[3][3], const BvhAngles& before) {
    return AnglesNear(AnglesOf(axes), axes, before);
}

}  // namespace exporters
