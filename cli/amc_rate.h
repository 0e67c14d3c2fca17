#pragma once

#include <istream>

namespace cli {

// Whether an AMC motion says how many frames a second has: it does so before anything else, and by
// a number above 1.
bool StatesRate(std::istream& amc);

}  // namespace cli
