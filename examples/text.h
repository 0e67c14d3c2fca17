// Numbers as the sample files write them: the same in every locale.
#pragma once

#include <string>

namespace examples {

// Appends `value` with that many digits after the decimal point. A zero never gets a minus sign.
void AppendNumber(std::string& text, double value, int digits = 6);

}  // namespace examples
