// A replacement for std::from_chars for double, which uses the library fast_float.
#pragma once

#include <charconv>
#include <cmath>
#include <fast_float/fast_float.h>
#include <system_error>

namespace textio::stand_ins {

// Accepts the same texts as std::from_chars and returns the same results. If it returns an error,
// `value` is unchanged.
inline std::from_chars_result from_chars(const char* first, const char* last, double& value) {
    double number = 0.0;
    const auto [end, error] = fast_float::from_chars(first, last, number);
    if (error != std::errc()) return {end, error};
    // fast_float stores an infinity or a zero when the number is out of range.
    const char* const begin = first + (*first == '-' ? 1 : 0);
    const bool isNumeral = *begin == '.' || (*begin >= '0' && *begin <= '9');
    if (isNumeral && std::isinf(number)) return {end, std::errc::result_out_of_range};
    if (isNumeral && number == 0.0) {
        for (const char* at = begin; at != end && *at != 'e' && *at != 'E'; ++at)
            if (*at >= '1' && *at <= '9') return {end, std::errc::result_out_of_range};
    }
    value = number;
    return {end, error};
}

}  // namespace textio::stand_ins
