// Numbers as the sample files write them: the same in every locale.
#pragma once

#include <string>

namespace examples {

// Appends `value` with that many digits behind the point; never a negative zero.
void AppendNumber(std::string& text, double value, int digits = 6);

}  // namespace examples
