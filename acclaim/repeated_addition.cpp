#include "acclaim/repeated_addition.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Up to this many additions are simply made one by one.
constexpr std::size_t kFew = 8;

// Whether the magnitude of the number is greater than 2^exponent and less than 2^(exponent + 1).
bool LiesInside(double number, int exponent) {
    return std::ilogb(number) == exponent && std::fabs(number) != std::ldexp(1.0, exponent);
}

// Returns a number of additions of `step` that surely keep the magnitude of `sum` inside its range,
// which goes from one power of two to the next. It may be slightly smaller than the largest such
// number.
std::size_t StepsInside(double sum, double step) {
    const int exponent = std::ilogb(sum);
    const double magnitude = std::fabs(sum);
    const bool grows = std::signbit(sum) == std::signbit(step);
    const double largest = std::numeric_limits<double>::max();
    const double room = grows ? std::min(std::ldexp(1.0, exponent + 1), largest) - magnitude
                              : magnitude - std::ldexp(1.0, exponent);
    // One step is subtracted, because the division may have rounded up.
    const double steps = std::floor(room / std::fabs(step)) - 1.0;
    return steps > 0.0 ? static_cast<std::size_t>(std::min(steps, 0x1p62)) : 0;
}

}  // namespace

// From one power of two to the next, all doubles have the same distance from each other. As long as
// the sum stays in this range, every addition moves it by the same number of these distances, so
// that many additions can be replaced by one multiplication. There is one exception: an exact sum
// half way between two doubles is rounded to the one whose last bit is zero. After one such
// addition the last bit of the sum stays zero, and all further additions move it equally. The step
// is therefore measured from the second to the third of three sums, because the last bit of the
// first one may not be zero.
double AddRepeatedly(double sum, double term, std::size_t times) {
    while (times > kFew) {
        const double first = sum + term;
        const double second = first + term;
        const double third = second + term;
        times -= 3;
        sum = third;
        const double step = third - second;
        // Further additions change nothing: the term is too small, or the sum is infinite or NaN.
        if (step == 0.0 || std::isnan(step)) return sum;
        const int exponent = std::ilogb(third);
        if (!LiesInside(first, exponent) || !LiesInside(second, exponent) ||
            !LiesInside(third, exponent))
            continue;
        const std::size_t jump = std::min(times, StepsInside(third, step));
        sum += step * static_cast<double>(jump);
        times -= jump;
    }
    for (; times > 0; --times)
        sum += term;
    return sum;
}
