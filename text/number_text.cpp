#include "text/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "text/to_chars.h"

namespace text {
namespace {

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
// Neighbouring doubles below this limit differ by at most one half.
constexpr double kExact = 4e15;

// The digits of "00" to "99", two for each number.
constexpr std::array<char, 200> kPairs = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

// Writes the last `count` digits of `number`. If `number` has fewer digits, zeros come before them.
void WriteDigits(char* out, std::uint64_t number, int count) {
    for (; count >= 2; number /= 100) {
        count -= 2;
        std::memcpy(out + count, &kPairs[2 * (number % 100)], 2);
    }
    if (count == 1) *out = static_cast<char>('0' + number);
}

// The texts of the numbers 0 to 999, four characters for each. The last character is not part of
// the text: it is the number of the others that are.
constexpr std::array<char, 4000> kWholes = [] {
    std::array<char, 4000> wholes{};
    for (std::size_t i = 0; i < 1000; ++i) {
        char* out = &wholes[4 * i];
        if (i >= 100) *out++ = static_cast<char>('0' + i / 100);
        if (i >= 10) *out++ = static_cast<char>('0' + i / 10 % 10);
        *out++ = static_cast<char>('0' + i % 10);
        wholes[4 * i + 3] = static_cast<char>(i >= 100 ? 3 : i >= 10 ? 2 : 1);
    }
    return wholes;
}();

// Writes a whole number and returns the end of the text. It may also change a few characters after
// the end. Angles and most lengths have up to three digits before the decimal point. How many of
// them a number has cannot be predicted, so no branch depends on it.
char* WriteWhole(char* out, std::uint64_t number) {
    if (number >= 1000) return std::to_chars(out, out + kLongestNumber, number).ptr;
    const char* const whole = &kWholes[4 * static_cast<std::size_t>(number)];
    std::memcpy(out, whole, 4);
    return out + whole[3];
}

}  // namespace

char* WriteNumber(char* out, double number, int decimals) {
    if (decimals > kMostDecimals) return to_chars(out, out + kLongestNumber, number).ptr;
    const double power = kPowersOfTen[decimals];
    const double scaled = std::abs(number) * power;
    if (!(scaled < kExact)) return to_chars(out, out + kLongestNumber, number).ptr;

    // This way of rounding is fast. It can be wrong only if the part that is cut off is almost
    // exactly one half.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): either neighbour will do in that case.
    auto digits = static_cast<std::uint64_t>(scaled + 0.5);
    if (digits == 0) {
        *out = '0';
        return out + 1;
    }
    // Without a branch, because the sign cannot be predicted.
    *out = '-';
    out += number < 0 ? 1 : 0;
    const auto unit = static_cast<std::uint64_t>(power);
    out = WriteWhole(out, digits / unit);
    const std::uint64_t fraction = digits % unit;
    if (fraction == 0) return out;
    *out++ = '.';
    WriteDigits(out, fraction, decimals);
    out += decimals;
    while (out[-1] == '0')
        --out;
    return out;
}

std::string NumberText(double number) {
    char text[kLongestNumber];
    const char* end = to_chars(text, text + sizeof(text), number).ptr;
    return std::string(text, static_cast<std::size_t>(end - text));
}

int DecimalsFor(double size) {
    if (!(size > 0.0)) return kMostDecimals + 1;
    return std::max(8 - static_cast<int>(std::floor(std::log10(size))), 4);
}

}  // namespace text
