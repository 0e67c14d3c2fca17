// What the readers of plain decimals have in common. Internal to textio/.
#pragma once

#include <cstddef>
#include <cstdint>

namespace textio {

// The powers of ten that are exact as doubles.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
// All integers below this one are exact as doubles.
inline constexpr std::uint64_t kExactIntegers = std::uint64_t{1} << 53;
// An integer with this many digits always fits into 64 bits.
inline constexpr std::ptrdiff_t kSafeDigits = 19;

constexpr bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

// Appends the digits from `at` on to the integer. Returns the end of the digits.
inline const char* ReadDigits(const char* at, std::uint64_t& digits) {
    for (; IsDigit(*at); ++at)
        digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    return at;
}

}  // namespace textio
