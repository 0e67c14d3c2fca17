#include "acclaim/repeated_addition.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// If no more additions than this are left, they are made one by one.
constexpr std::size_t kFew = 8;

// Whether the magnitude of the number is greater than 2^exponent and less than 2^(exponent + 1).
bool LiesInside(double number, int exponent) {
    return std::ilogb(number) == exponent && std::fabs(number) != std::ldexp(1.0, exponent);
}

// The magnitude of `sum` is in a range between two neighbouring powers of two. Returns how many
// times `step` can be added before the magnitude leaves this range. The result may be slightly too
// small, but never too large.
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

// Between two neighbouring powers of two, all doubles have the same distance from each other. While
// the sum stays in this range, every addition changes it by the same step. Many additions can
// therefore be replaced by one multiplication. There is one exception: an exact sum that is half
// way between two doubles is rounded to the double whose last bit is zero. If one exact sum is half
// way, the exact sums after it are half way too. Each of them is rounded to a last bit of zero, so
// all further additions change the sum by the same step. But the first or the second addition may
// start from a sum whose last bit is one, and change it by another step. The step is therefore the
// difference between the second sum and the third sum.
double AddRepeatedly(double sum, double term, std::size_t times) {
    while (times > kFew) {
        const double first = sum + term;
        const double second = first + term;
        const double third = second + term;
        times -= 3;
        sum = third;
        const double step = third - second;
        // Further additions do not change the sum, because the term is too small or the sum is
        // infinite or NaN.
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
