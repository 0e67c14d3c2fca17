// A stand-in for std::to_chars of a double. It takes the shortest digits from fmt.
#pragma once

#include <charconv>

namespace text::stand_ins {

// Writes the shortest text that reads back as `number`. Fixed notation is used unless scientific
// notation is shorter. If the text does not fit, writes nothing and returns `last` with
// std::errc::value_too_large.
std::to_chars_result to_chars(char* first, char* last, double number);

}  // namespace text::stand_ins
