#include "acclaim/repeated_addition.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// So few additions are made one by one.
constexpr std::size_t kFew = 8;

// Whether the number lies between two neighbouring powers of two, is neither of them, and has the
// given exponent.
bool LiesInside(double number, int exponent) {
    return std::ilogb(number) == exponent && std::fabs(number) != std::ldexp(1.0, exponent);
}

// How many further steps surely keep `sum` between the powers of two that it lies between.
std::size_t StepsInside(double sum, double step) {
    const int exponent = std::ilogb(sum);
    const double magnitude = std::fabs(sum);
    const bool grows = std::signbit(sum) == std::signbit(step);
    const double largest = std::numeric_limits<double>::max();
    const double room = grows ? std::min(std::ldexp(1.0, exponent + 1), largest) - magnitude
                              : magnitude - std::ldexp(1.0, exponent);
    // One less, since the quotient may have been rounded up.
    const double steps = std::floor(room / std::fabs(step)) - 1.0;
    return steps > 0.0 ? static_cast<std::size_t>(std::min(steps, 0x1p62)) : 0;
}

}  // namespace

// Between two powers of two numbers are equally far apart, so that every addition there moves the
// sum by the same number of these distances. The exception is a term that ends half way between two
// of them, which rounds to the even one; after one such addition all sums are even, and the way is
// the same again. Three sums in a row show that way: the first may come from elsewhere, the second
// may be the odd one.
double AddRepeatedly(double sum, double term, std::size_t times) {
    while (times > kFew) {
        const double first = sum + term;
        const double second = first + term;
        const double third = second + term;
        times -= 3;
        sum = third;
        const double step = third - second;
        // It moves no more, or is no number.
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
