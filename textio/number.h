// Functions that convert text to numbers. The results are the same in every locale.
#pragma once

namespace textio {

// Returns what atof returns for `text` in the "C" locale. It accepts leading white space, a "+",
// hexadecimal numbers, "inf" and "nan". Text after the number is ignored. A number that is too
// large becomes infinite. If there is no number, the result is 0.
double ToDouble(const char* text);

// Returns what atoi of the GNU C library returns for `text`: the low 32 bits of the number, or 0 if
// there is no number. Before that, a number outside the range of `long` is replaced by the nearest
// number of that range.
int ToInt(const char* text);

// Reads a plain decimal number without copying its text. Such a number has an optional "-", then
// digits, which may contain a point, then an optional exponent. Nearly all values in files are
// plain decimals. Stores exactly the result of ToDouble in `value` and returns the end of the
// number. Returns null if the number is zero or out of range, or if there is no plain decimal
// number at `first`. In this case, use ToDouble. `last` is the end of the text. The byte at `last`
// is read, too. It must not be a digit, a point or a "-", because it would be taken for a part of
// the number. The NUL at the end of a string is suitable.
const char* ReadPlainDecimal(const char* first, const char* last, double& value);

// Whether a token that ToDouble or ToInt converts to zero is a number.
constexpr bool IsAcceptedZero(const char* token) {
    return token[0] == '0' || (token[0] == '-' && token[1] == '0');
}

}  // namespace textio
