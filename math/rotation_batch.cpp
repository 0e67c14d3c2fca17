#include "math/rotation_batch.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "math/angles.h"
#include "math/rotation_kernel.h"
#include "math/rotation_math.h"

namespace {

// If the magnitude of the pitch angle's cosine is not above this limit, ConvertRotation is used. It
// computes the pitch angle with asin, which is inaccurate so close to gimbal lock. The vector loops
// do not use asin, so their result would differ from that of ConvertRotation. MatrixGetEulerAngles,
// which ConvertRotation calls, has its own limit for gimbal lock, which is much smaller.
constexpr double kNearGimbalLock = 1e-2;
// In degrees. If an angle differs from 180 or from -180 degrees by less than this, rounding errors
// may decide its sign.
constexpr double kNearHalfTurn = 1e-9;

RotationKernel ChooseKernel() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return RotationKernelAvx2;
#endif
    return RotationKernelPlain;
}

void AxisRotation(double m[4][4], int axis, double angle) {
    if (axis == 0) return MatrixRotationX(m, angle);
    if (axis == 1) return MatrixRotationY(m, angle);
    MatrixRotationZ(m, angle);
}

void MultiplyInto(double all[4][4], const double factor[4][4]) {
    double product[4][4];
    MatrixMult(all, factor, product);
    std::memcpy(all, product, sizeof(product));
}

bool IsHalfTurn(double degrees) {
    return std::fabs(std::fabs(degrees) - math::kHalfTurn) < kNearHalfTurn;
}

// Whether the vector loops and ConvertRotation choose the same sign for an angle of 180 degrees.
// They do if one of the input angles is zero, and `before` and `after` are null. Each element of
// the matrix is then one product, not a sum, so rounding cannot change its sign.
bool IsExact(const double angles[3], const RotationProduct& product) {
    if (product.before != nullptr || product.after != nullptr) return false;
    return angles[0] == 0.0 || angles[1] == 0.0 || angles[2] == 0.0;
}

// Whether a lane must be converted by ConvertRotation, because the vector loops may have computed
// other angles. `angles` is the input of the lane; `converted` is what the vector loops computed.
bool NeedsConvertRotation(const double angles[3], const double converted[3], double cosine,
                          const RotationProduct& product) {
    if (!(cosine > kNearGimbalLock)) return true;
    // If an input angle is NaN, ConvertRotation can return more NaN angles than the vector loops.
    // Each input angle affects at least one angle in `converted`. So the sum below is NaN if an
    // input angle is NaN.
    if (std::isnan(converted[0] + converted[1] + converted[2])) return true;
    return std::any_of(converted, converted + 3, IsHalfTurn) && !IsExact(angles, product);
}

}  // namespace

void ConvertRotation(double angles[3], const RotationProduct& product) {
    double all[4][4];
    MatrixIdentity(all);
    if (product.before != nullptr) MultiplyInto(all, product.before);
    for (int i = 0; i < 3; ++i) {
        double turn[4][4];
        AxisRotation(turn, product.axis[i], angles[i] * math::kRadiansPerDegree);
        MultiplyInto(all, turn);
    }
    if (product.after != nullptr) MultiplyInto(all, product.after);
    MatrixGetEulerAngles(all, angles[0], angles[1], angles[2]);
    for (int i = 0; i < 3; ++i)
        angles[i] *= math::kDegreesPerRadian;
}

void ConvertRotations(RotationBlock& block, const RotationProduct& product, std::size_t lanes) {
    static const RotationKernel kernel = ChooseKernel();
    RotationKernelResult result;
    kernel(block, product, result);
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        double angles[3] = {block.angle[0][lane], block.angle[1][lane], block.angle[2][lane]};
        const double converted[3] = {result.angle[0][lane], result.angle[1][lane],
                                     result.angle[2][lane]};
        if (NeedsConvertRotation(angles, converted, result.cosine[lane], product))
            ConvertRotation(angles, product);
        else
            std::copy_n(converted, 3, angles);
        for (int i = 0; i < 3; ++i)
            block.angle[i][lane] = angles[i];
    }
}
