#pragma once

#include <string_view>

namespace cli {

// Returns whether an AMC file states its rate: its first token is :SAMPLES-PER-SECOND in upper or
// lower case, and its second token begins with a whole number above 1.
bool StatesRate(std::string_view amc);

}  // namespace cli
