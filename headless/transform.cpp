#include "headless/transform.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "headless/direction.h"
#include "headless/double_pair.h"

namespace headless {

namespace {

// pi / 180 as a sum of two doubles, so that converting an angle to radians loses no accuracy.
constexpr double kRadiansHigh = 0x1.1df46a2529d39p-6;
constexpr double kRadiansLow = 0x1.5c1d8becdd291p-62;

struct SineCosine {
    double sine;
    double cosine;
};

// The integer nearest to `number`. The magnitude of `number` must be below 2^51. No library
// function is called, because this is faster.
double Nearest(double number) {
    constexpr double kUnitsOnly = 0x1.8p52;
    return (number + kUnitsOnly) - kUnitsOnly;
}

// The sine and the cosine are exact at multiples of 90 degrees. For other angles only the results
// are rounded. Both are NaN if `degrees` is not finite.
SineCosine SineCosineOfDegrees(double degrees) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    if (!std::isfinite(degrees)) return {kNan, kNan};
    const double reduced = std::fabs(degrees) < 1e9 ? degrees : std::fmod(degrees, 360.0);
    const double quarters = Nearest(reduced / 90.0);
    const double rest = reduced - 90.0 * quarters;  // exact; its magnitude is at most about 45
    const double high = rest * kRadiansHigh;
    const double low = RoundingError(rest, kRadiansHigh, high) + rest * kRadiansLow;
    double sine = std::sin(high);
    double cosine = std::cos(high);
    const double correction = low * sine;
    sine += low * cosine;
    cosine -= correction;
    switch (static_cast<std::int64_t>(quarters) & 3) {
        case 0:
            return {sine, cosine};
        case 1:
            return {cosine, -sine};
        case 2:
            return {-sine, -cosine};
        default:
            return {-cosine, sine};
    }
}

}  // namespace

Transform operator*(const Transform& a, const Transform& b) {
    Transform product;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            product.axes[row][column] = a.axes[row][0] * b.axes[0][column] +
                                        a.axes[row][1] * b.axes[1][column] +
                                        a.axes[row][2] * b.axes[2][column];
    for (int column = 0; column < 3; ++column)
        product.origin[column] = a.origin[0] * b.axes[0][column] + a.origin[1] * b.axes[1][column] +
                                 a.origin[2] * b.axes[2][column] + b.origin[column];
    return product;
}

Transform Inverse(const Transform& rigid) {
    Transform inverse;
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            inverse.axes[row][column] = rigid.axes[column][row];
    for (int column = 0; column < 3; ++column)
        inverse.origin[column] =
            -(rigid.origin[0] * rigid.axes[column][0] + rigid.origin[1] * rigid.axes[column][1] +
              rigid.origin[2] * rigid.axes[column][2]);
    return inverse;
}

Transform FromLocal(const std::array<double, 6>& local) {
    const auto [sx, cx] = SineCosineOfDegrees(local[3]);
    const auto [sy, cy] = SineCosineOfDegrees(local[4]);
    const auto [sz, cz] = SineCosineOfDegrees(local[5]);
    return {{{cy * cz, cy * sz, -sy},
             {sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy},
             {cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy}},
            {local[0], local[1], local[2]}};
}

// The matrix is M = Rx * Ry * Rz. First z is computed from the first row of M, as the direction of
// the vector (cosine, sine). Then x and y are computed from M * Rz^-1, which is Rx * Ry. Here Rz is
// the rotation by the returned z, which is rounded to a double. `turn` is the rounding error in
// radians. The vector is rotated by -turn, so that its direction is the returned z. At gimbal lock
// M can be computed from any z, if x is right for that z. x is always computed for the returned z,
// so gimbal lock needs no special case.
std::array<double, 3> AnglesOf(const double axes[3][3]) {
    // If the vector (cosine, sine) is shorter than this, it consists of rounding errors, and z is
    // set to 0.
    constexpr double kNoDirection = 2.5e-16;
    DoublePair sine = {axes[0][1], 0.0};
    DoublePair cosine = {axes[0][0], 0.0};
    DoublePair z = {0.0, 0.0};
    // At first the squared length of the vector (cosine, sine), later the length. It need not be 1,
    // because DirectionInDegrees accepts vectors of any length.
    DoublePair length = Sum(Product(sine.high, sine.high), Product(cosine.high, cosine.high));
    if (length.high < kNoDirection * kNoDirection) {
        sine = {0.0, 0.0};
        length = cosine;
        cosine = {1.0, 0.0};
    } else {
        z = DirectionInDegrees(sine, cosine);
        length = SquareRoot(length);
        if (z.low != 0.0) {
            const double turn = z.low * kRadiansHigh;
            sine = ExactSum(axes[0][1], -axes[0][0] * turn);
            cosine = ExactSum(axes[0][0], axes[0][1] * turn);
        }
    }
    const DoublePair x =
        DirectionInDegrees(Sum(Product(sine, axes[2][0]), Product(cosine, -axes[2][1])),
                           Sum(Product(cosine, axes[1][1]), Product(sine, -axes[1][0])));
    const DoublePair y = DirectionInDegrees({-axes[0][2], 0.0}, length);
    // Adding 0.0 turns -0.0 into 0.0.
    return {x.high + 0.0, y.high + 0.0, z.high + 0.0};
}

}  // namespace headless
