#include "text/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

#include "text/to_chars.h"

namespace text {
namespace {

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

void WritePair(char* out, std::uint64_t number) {
    std::memcpy(out, &kPairs[2 * static_cast<std::size_t>(number)], 2);
}

// Writes the six digits of a number below a million. Few of the steps wait for earlier ones.
void WriteSixDigits(char* out, std::uint64_t number) {
    const std::uint64_t rest = number % 10'000;
    WritePair(out, number / 10'000);
    WritePair(out + 2, rest / 100);
    WritePair(out + 4, rest % 100);
}

constexpr std::uint64_t PowerOfTen(int exponent) {
    return exponent == 0 ? 1 : 10 * PowerOfTen(exponent - 1);
}

// Writes the decimals of a fraction, which is given as a multiple of 10 to the power of -kDecimals.
// May also write up to five zeros after them.
template <int kDecimals>
void WriteFraction(char* out, std::uint64_t fraction) {
    if constexpr (kDecimals % 6 != 0) {
        constexpr int kMissing = 6 - kDecimals % 6;
        WriteFraction<kDecimals + kMissing>(out, fraction * PowerOfTen(kMissing));
    } else if constexpr (kDecimals > 0) {
        constexpr std::uint64_t kMillion = PowerOfTen(6);
        WriteFraction<kDecimals - 6>(out, fraction / kMillion);
        WriteSixDigits(out + kDecimals - 6, fraction % kMillion);
    }
}

// The texts of the numbers 0 to 999 with a decimal point after them, eight characters for each. The
// last character is not part of the text: it is how many of the others are.
constexpr std::array<char, 8000> kWholes = [] {
    std::array<char, 8000> wholes{};
    for (std::size_t i = 0; i < 1000; ++i) {
        char* out = &wholes[8 * i];
        if (i >= 100) *out++ = static_cast<char>('0' + i / 100);
        if (i >= 10) *out++ = static_cast<char>('0' + i / 10 % 10);
        *out++ = static_cast<char>('0' + i % 10);
        *out = '.';
        wholes[8 * i + 7] = static_cast<char>(i >= 100 ? 4 : i >= 10 ? 3 : 2);
    }
    return wholes;
}();

// Writes a whole number and a decimal point, and returns the end of the text. It may also change a
// few characters after the end. Angles and most lengths have up to three digits before the decimal
// point. How many of them a number has cannot be predicted, so no branch depends on it.
char* WriteWhole(char* out, std::uint64_t number) {
    if (number < 1000) {
        const char* const whole = &kWholes[8 * static_cast<std::size_t>(number)];
        std::memcpy(out, whole, 8);
        return out + whole[7];
    }
    out = std::to_chars(out, out + kLongestNumber, number).ptr;
    *out = '.';
    return out + 1;
}

char* WriteShortest(char* out, double number) {
    return to_chars(out, out + kLongestNumber, number).ptr;
}

// Rounds the number to kDecimals digits after the decimal point. The compiler can replace divisions
// by constants, which takes half the time.
template <int kDecimals>
char* WriteRounded(char* out, double number) {
    constexpr std::uint64_t kUnit = PowerOfTen(kDecimals);
    const double scaled = std::abs(number) * static_cast<double>(kUnit);
    if (!(scaled < kExact)) return WriteShortest(out, number);

    // This way of rounding is fast. It can be wrong only if the part that is cut off is almost
    // exactly one half.
    // NOLINTNEXTLINE(bugprone-incorrect-roundings): either neighbour will do in that case.
    const auto digits = static_cast<std::uint64_t>(static_cast<std::int64_t>(scaled + 0.5));
    if (digits == 0) {
        *out = '0';
        return out + 1;
    }
    // Without a branch, because the sign cannot be predicted.
    *out = '-';
    out += number < 0 ? 1 : 0;
    out = WriteWhole(out, digits / kUnit);
    const std::uint64_t fraction = digits % kUnit;
    if (fraction == 0) return out - 1;
    WriteFraction<kDecimals>(out, fraction);
    out += kDecimals;
    while (out[-1] == '0')
        --out;
    return out;
}

using Writer = char*(char* out, double number);

// Element d is the function that writes d decimals.
constexpr auto kWriters = []<int... kDecimals>(std::integer_sequence<int, kDecimals...>) {
    return std::array<Writer*, sizeof...(kDecimals)>{WriteRounded<kDecimals>...};
}
(std::make_integer_sequence<int, kMostDecimals + 1>());

}  // namespace

char* WriteNumber(char* out, double number, int decimals) {
    if (decimals > kMostDecimals) return WriteShortest(out, number);
    return kWriters[static_cast<std::size_t>(decimals)](out, number);
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
