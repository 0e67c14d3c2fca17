#pragma once

#include <istream>

namespace cli {

// Returns whether an AMC file states its rate: its first token is :SAMPLES-PER-SECOND, and a number
// above 1 follows.
bool StatesRate(std::istream& amc);

}  // namespace cli
