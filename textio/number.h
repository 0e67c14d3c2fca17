// Converts text to numbers, in the same way in every locale.
#pragma once

namespace textio {

// Returns what atof returns for `text` in the "C" locale. Leading white space, a "+", hexadecimal
// numbers, "inf" and "nan" are accepted; what follows the number is ignored; a number that is too
// large becomes infinite; without a number the result is 0.
double ToDouble(const char* text);

// Returns what atoi returns for `text`: the low 32 bits of the number, or 0 without a number.
int ToInt(const char* text);

// Reads a plain decimal without copying it: an optional "-", digits, a point, an exponent. Nearly
// all values are plain decimals. Stores the same bits as ToDouble and returns the end of the
// number. Returns null when the text at `first` is anything else, a zero or out of range; then use
// ToDouble. `last` is the end of the text. The byte there must be readable and not part of a
// number, such as the NUL after a text.
const char* ReadPlainDecimal(const char* first, const char* last, double& value);

}  // namespace textio
