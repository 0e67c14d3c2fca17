// Estimates how many values an AMC file has, for the progress of its import.
#pragma once

#include <cstdint>

#include "take/request.h"

namespace cli {

// Counts the values at the start of the file and assumes that the rest of the file has as many in
// each byte. Returns 0 if the file cannot be read or is no text. A pipe is not read, because its
// bytes would then be missing in the import.
std::uint64_t EstimateAmcValues(const take::InputFile& amc);

}  // namespace cli
