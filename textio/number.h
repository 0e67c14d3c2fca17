// Text to numbers, alike in every locale.
#pragma once

namespace textio {

// What atof gives for `text` under the "C" locale: leading white space and "+", hexadecimal, "inf"
// and "nan" are read, what follows the number is ignored, overflow is infinite, no number is 0.
double ToDouble(const char* text);

// What atoi gives for `text`: the number's low 32 bits where it has more, 0 without a number.
int ToInt(const char* text);

// The plain decimals that nearly all values are, read in place: optional "-", digits, point,
// exponent; bit for bit what ToDouble gives. Returns the end of the number, or null where `first`
// does not begin a plain, finite decimal that is not zero; ToDouble then decides. `last` is the end
// of the text and must be readable and no part of a number, as the NUL behind a text is.
const char* ReadPlainDecimal(const char* first, const char* last, double& value);

}  // namespace textio
