#include "text/to_chars_stand_in.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fmt/format.h>
#include <string>
#include <string_view>
#include <system_error>

namespace text::stand_ins {
namespace {

// No number needs this many characters. Scientific notation needs at most 24: a sign, 17 digits, a
// point and an exponent such as "e-308". Fixed notation is used only if it is not longer.
constexpr std::size_t kMostCharacters = 40;

// A number above zero. Its value is 0.DIGITS * 10^point, where DIGITS are the digits.
struct Decimal {
    char digits[kMostCharacters];
    int count = 0;  // the number of digits
    int point = 0;
};

Decimal ShortestDecimal(double number) {
    char shortest[kMostCharacters];
    const char* const end = fmt::format_to(shortest, "{}", number);
    Decimal decimal;
    bool isPastPoint = false;
    for (const char* at = shortest; at != end; ++at) {
        if (*at == 'e') {
            decimal.point +=
                static_cast<int>(std::strtol(std::string(at + 1, end).c_str(), nullptr, 10));
            break;
        }
        if (*at == '.') {
            isPastPoint = true;
            continue;
        }
        const bool isLeadingZero = *at == '0' && decimal.count == 0;
        if (!isLeadingZero) decimal.digits[decimal.count++] = *at;
        if (isPastPoint == isLeadingZero) decimal.point += isPastPoint ? -1 : 1;
    }
    while (decimal.digits[decimal.count - 1] == '0')
        --decimal.count;
    return decimal;
}

char* Append(char* out, std::string_view text) {
    std::memcpy(out, text.data(), text.size());
    return out + text.size();
}

char* AppendZeros(char* out, int count) {
    for (; count > 0; --count)
        *out++ = '0';
    return out;
}

char* WriteScientific(char* out, const Decimal& decimal) {
    const std::string_view digits(decimal.digits, static_cast<std::size_t>(decimal.count));
    out = Append(out, digits.substr(0, 1));
    if (digits.size() > 1) {
        *out++ = '.';
        out = Append(out, digits.substr(1));
    }
    const int exponent = decimal.point - 1;
    return fmt::format_to(out, "e{}{:02}", exponent < 0 ? '-' : '+', std::abs(exponent));
}

char* WriteFixed(char* out, const Decimal& decimal, double number) {
    const std::string_view digits(decimal.digits, static_cast<std::size_t>(decimal.count));
    // A whole number is written with all digits of its exact value. The shortest digits with zeros
    // after them may be a different whole number.
    if (decimal.point >= decimal.count) return fmt::format_to(out, "{:.0f}", number);
    if (decimal.point <= 0) return Append(AppendZeros(Append(out, "0."), -decimal.point), digits);
    const auto whole = static_cast<std::size_t>(decimal.point);
    return Append(Append(Append(out, digits.substr(0, whole)), "."), digits.substr(whole));
}

int FixedLength(const Decimal& decimal) {
    if (decimal.point >= decimal.count) return decimal.point;
    return decimal.point <= 0 ? 2 - decimal.point + decimal.count : decimal.count + 1;
}

int ScientificLength(const Decimal& decimal) {
    const bool isLongExponent = std::abs(decimal.point - 1) >= 100;
    return decimal.count + (decimal.count > 1 ? 1 : 0) + (isLongExponent ? 5 : 4);
}

char* WritePositive(char* out, double number) {
    if (std::isnan(number)) return Append(out, "nan");
    if (std::isinf(number)) return Append(out, "inf");
    if (number == 0.0) return Append(out, "0");
    const Decimal decimal = ShortestDecimal(number);
    return FixedLength(decimal) <= ScientificLength(decimal) ? WriteFixed(out, decimal, number)
                                                             : WriteScientific(out, decimal);
}

}  // namespace

std::to_chars_result to_chars(char* first, char* last, double number) {
    char written[kMostCharacters];
    char* end = written;
    if (std::signbit(number)) *end++ = '-';
    end = WritePositive(end, std::fabs(number));
    if (end - written > last - first) return {last, std::errc::value_too_large};
    return {Append(first, {written, static_cast<std::size_t>(end - written)}), std::errc()};
}

}  // namespace text::stand_ins
