// A stand-in for std::to_chars of a double, made from the shortest digits that fmt finds.
#pragma once

#include <charconv>

namespace text::stand_ins {

// Writes the fewest digits that read back as `number`, in fixed or scientific notation, whichever
// is shorter. If there is no room, writes nothing and returns `last` with
// std::errc::value_too_large.
std::to_chars_result to_chars(char* first, char* last, double number);

}  // namespace text::stand_ins
