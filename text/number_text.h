// Writes numbers as text. The result does not depend on the locale.
#pragma once

#include <string>

namespace text {

// The most characters that WriteNumber writes.
inline constexpr int kLongestNumber = 32;
// The most decimals to which WriteNumber rounds.
inline constexpr int kMostDecimals = 15;

// Writes a finite number to `out` and returns the end of the text. No NUL byte is written. `out`
// needs room for kLongestNumber characters; those after the text may change, too. There are two
// cases:
// - If `decimals` is above kMostDecimals, or if the number is too large to be rounded, the text is
//   the shortest one that reads back as the same double. For -0.0 it is "-0".
// - In all other cases the number is rounded to `decimals` digits after the decimal point. Zeros at
//   the end of these digits are left out. The text is never "-0".
char* WriteNumber(char* out, double number, int decimals);

// Returns the shortest text that reads back as the same double.
std::string NumberText(double number);

// Returns how many decimals a length needs so that its rounding error stays below a
// hundred-millionth of `size`, the size of the skeleton in the same unit. The result is at least 4.
// If `size` is 0, the result is above kMostDecimals, so that WriteNumber does not round.
int DecimalsFor(double size);

// How many decimals are written of an angle in degrees. If the angle of a joint is rounded to them,
// a point moves by less than a hundred-millionth of its distance from the joint.
inline constexpr int kAngleDecimals = 6;

}  // namespace text
