// std::to_chars for a double, by fmt's shortest digits.
#pragma once

#include <charconv>

namespace text::stand_ins {

// The fewest digits that read back as `number`, in whichever of the two notations is shorter.
// Writes nothing and gives std::errc::value_too_large where there is no room.
std::to_chars_result to_chars(char* first, char* last, double number);

}  // namespace text::stand_ins
