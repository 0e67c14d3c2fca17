// Writes numbers as text. The result does not depend on the locale.
#pragma once

#include <string>

namespace text {

// The most characters that WriteNumber writes.
inline constexpr int kLongestNumber = 32;
// The most decimals to which WriteNumber rounds.
inline constexpr int kMostDecimals = 15;

// Writes a finite number, rounded to `decimals` digits after the decimal point, without zeros at
// the end ("1.5", "0", never "-0"). If `decimals` is above kMostDecimals, or the number is too
// large to be rounded, writes the shortest text that reads back as the same double ("-0" for -0.0).
// `out` needs room for kLongestNumber characters. Returns the end of the text, which has no NUL
// byte.
char* WriteNumber(char* out, double number, int decimals);

// The shortest text that reads back as the same double.
std::string NumberText(double number);

// The decimals, at least 4, with which the rounding error of a length stays below a
// hundred-millionth of `size`. If `size` is 0, the result is above kMostDecimals, so that nothing
// is rounded.
int DecimalsFor(double size);

// The decimals of an angle in degrees. A point at a skeleton's size from the joint is then wrong by
// less than a hundred-millionth of that size.
inline constexpr int kAngleDecimals = 6;

}  // namespace text
