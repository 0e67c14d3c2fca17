#include "textio/number.h"

#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <system_error>

#include "textio/decimal.h"
#include "textio/stand_ins.h"

namespace textio {
namespace {

const char* ReadAnyDecimal(const char* first, const char* last, double& value) {
    double number = 0.0;
    const auto [end, error] = from_chars(first, last, number);
    // A zero or a number out of range is not accepted here. The caller then uses ToDouble, which
    // returns the result of the C library.
    if (error != std::errc() || number == 0.0) return nullptr;
    value = number;
    return end;
}

}  // namespace

double ToDouble(const char* text) {
    // This locale object of the C library always exists. newlocale allocates no memory for it, so
    // it need not be freed.
    static const locale_t plainLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(text, nullptr, plainLocale);
}

int ToInt(const char* text) {
    return static_cast<int>(std::strtol(text, nullptr, 10));
}

// All digits are read as one integer, which is then divided once by a power of ten. If the integer
// and the power of ten are exact as doubles, the quotient is the double nearest to the number.
// strtod returns the same double.
const char* ReadPlainDecimal(const char* first, const char* last, double& value) {
    const bool negative = *first == '-';
    const char* const start = first + (negative ? 1 : 0);
    std::uint64_t digits = 0;
    const char* const point = ReadDigits(start, digits);
    const char* end = point;
    std::ptrdiff_t decimals = 0;
    if (*point == '.') {
        end = ReadDigits(point + 1, digits);
        decimals = end - point - 1;
    }
    const std::ptrdiff_t count = (point - start) + decimals;
    if (count == 0) return nullptr;
    if (count > kSafeDigits || digits >= kExactIntegers || *end == 'e' || *end == 'E')
        return ReadAnyDecimal(first, last, value);
    if (digits == 0) return nullptr;
    const double number = static_cast<double>(digits) / kPowersOfTen[decimals];
    value = negative ? -number : number;
    return end;
}

}  // namespace textio
