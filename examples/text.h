// Writes numbers for the sample files. The locale does not change how they are written.
#pragma once

#include <string>

namespace examples {

// Appends `value` with `digits` digits after the decimal point. If all written digits are zeros,
// there is no minus sign.
void AppendNumber(std::string& text, double value, int digits = 6);

}  // namespace examples
