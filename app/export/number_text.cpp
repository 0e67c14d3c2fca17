#include "app/export/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace app {
namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
// Below this a double counts whole numbers without gaps, and halves of them too.
constexpr double kExact = 4e15;

// `count` digits of `number`, with zeros in front.
void WriteDigits(char* out, std::uint64_t number, int count) {
    while (count > 0) {
        out[--count] = static_cast<char>('0' + number % 10);
        number /= 10;
    }
}

}  // namespace

char* WriteNumber(char* out, double number, int decimals) {
    if (decimals > kMostDecimals) return std::to_chars(out, out + kLongestNumber, number).ptr;
    const double power = kPowersOfTen[decimals];
    const double scaled = std::abs(number) * power;
    if (!(scaled < kExact)) return std::to_chars(out, out + kLongestNumber, number).ptr;

    // NOLINTNEXTLINE(bugprone-incorrect-roundings): exact below kExact, and fast.
    auto digits = static_cast<std::uint64_t>(scaled + 0.5);
    if (digits == 0) {
        *out = '0';
        return out + 1;
    }
    if (number < 0) *out++ = '-';
    const auto unit = static_cast<std::uint64_t>(power);
    out = std::to_chars(out, out + kLongestNumber, digits / unit).ptr;
    std::uint64_t fraction = digits % unit;
    if (fraction == 0) return out;
    int places = decimals;
    for (; fraction % 10 == 0; fraction /= 10)
        --places;
    *out++ = '.';
    WriteDigits(out, fraction, places);
    return out + places;
}

std::string NumberText(double number) {
    char text[kLongestNumber];
    const char* end = std::to_chars(text, text + sizeof(text), number).ptr;
    return std::string(text, static_cast<std::size_t>(end - text));
}

int DecimalsFor(double size) {
    if (!(size > 0.0)) return kMostDecimals + 1;
    return std::max(8 - static_cast<int>(std::floor(std::log10(size))), 4);
}

}  // namespace app
