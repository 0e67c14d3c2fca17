#include "headless/transform.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace headless {

namespace {

// pi / 180 as a sum, so that an angle loses nothing on its way to radians.
constexpr double kRadiansHigh = 0x1.1df46a2529d39p-6;
constexpr double kRadiansLow = 0x1.5c1d8becdd291p-62;
constexpr long double kDegreesPerRadian = 57.295779513082320876798154814105170L;

struct SineCosine {
    double sine;
    double cosine;
};

// The whole number nearest to `number`, which is below 2^51, without a call of the library.
double Nearest(double number) {
    constexpr double kUnitsOnly = 0x1.8p52;
    return (number + kUnitsOnly) - kUnitsOnly;
}

// What rounding took from a * b = `product`, to the last bit: both factors in halves, whose
// products are exact (T. J. Dekker, 1971).
double RoundedOff(double a, double b, double product) {
    constexpr double kSplit = 0x1p27 + 1.0;
    const double aHigh = kSplit * a - (kSplit * a - a);
    const double bHigh = kSplit * b - (kSplit * b - b);
    const double aLow = a - aHigh;
    const double bLow = b - bHigh;
    return ((aHigh * bHigh - product) + aHigh * bLow + aLow * bHigh) + aLow * bLow;
}

// Exact at multiples of 90 degrees, within rounding of the result elsewhere.
SineCosine OfDegrees(double degrees) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    if (!std::isfinite(degrees)) return {kNan, kNan};
    const double turned = std::fabs(degrees) < 1e9 ? degrees : std::fmod(degrees, 360.0);
    const double quarters = Nearest(turned / 90.0);
    const double rest = turned - 90.0 * quarters;  // exact, at most 45 or so
    const double high = rest * kRadiansHigh;
    const double low = RoundedOff(rest, kRadiansHigh, high) + rest * kRadiansLow;
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
    const auto [sx, cx] = OfDegrees(local[3]);
    const auto [sy, cy] = OfDegrees(local[4]);
    const auto [sz, cz] = OfDegrees(local[5]);
    return {{{cy * cz, cy * sz, -sy},
             {sx * sy * cz - cx * sz, sx * sy * sz + cx * cz, sx * cy},
             {cx * sy * cz + sx * sz, cx * sy * sz - sx * cz, cx * cy}},
            {local[0], local[1], local[2]}};
}

// With M = Rx * Ry * Rz: z comes from the first row, and M * Rz^-1 = Rx * Ry then gives x and y
// from entries of which one of each pair is large, whatever z was. So the lock, where z means
// nothing, needs no case of its own: x makes up for any z. z is rounded to what is returned before
// it is taken out.
std::array<double, 3> AnglesOf(const double axes[3][3]) {
    const auto degrees = [](long double sine, long double cosine) {
        return static_cast<double>(std::atan2(sine, cosine) * kDegreesPerRadian);
    };
    // What is this short says nothing about z, and nothing is the plainest angle.
    constexpr double kNoDirection = 2.5e-16;
    const bool locked = std::hypot(axes[0][0], axes[0][1]) < kNoDirection;
    const double z = locked ? 0.0 : degrees(axes[0][1], axes[0][0]);
    const long double turn = static_cast<long double>(z) / kDegreesPerRadian;
    const long double sz = std::sin(turn);
    const long double cz = std::cos(turn);
    const double x = degrees(axes[2][0] * sz - axes[2][1] * cz, axes[1][1] * cz - axes[1][0] * sz);
    const double y =
        degrees(-static_cast<long double>(axes[0][2]), axes[0][0] * cz + axes[0][1] * sz);
    // Adding zero makes a negative zero a plain one.
    return {x + 0.0, y + 0.0, z + 0.0};
}

}  // namespace headless
