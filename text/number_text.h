// Numbers as text, fast and the same in every locale.
#pragma once

#include <string>

namespace text {

// The most characters that AppendNumber writes.
inline constexpr int kLongestNumber = 32;
// As many decimals as AppendNumber can keep; more ask for the shortest text that reads back whole.
inline constexpr int kMostDecimals = 15;

// Writes a finite number rounded to `decimals` places (0 or more), without zeros at the end ("1.5",
// "0", never "-0"), and returns the end of the text. What has no room for so many digits is written
// as the shortest text that reads back to the same double.
char* WriteNumber(char* out, double number, int decimals);

// The shortest text that reads back to the same double.
std::string NumberText(double number);

// Decimals that keep lengths within a hundred-millionth of `size`; at least 4. 0 for a size gives
// all there are.
int DecimalsFor(double size);

// Of angles in degrees: a skeleton's length away the error stays below a hundred-millionth of it.
inline constexpr int kAngleDecimals = 6;

}  // namespace text
