// Converts numbers to 32-bit floats.
// Internal to export/.
#pragma once

#include <cmath>
#include <limits>

#include "export/options.h"

namespace exporters {

// Throws ExportError if the value is not finite or too large for a 32-bit float. Readers of many
// formats keep numbers in 32 bits, even those that are written with more.
inline void RequireSingle(double value) {
    // The comparison is negated, because a NaN must be refused too and compares as false.
    if (!(std::abs(value) <= static_cast<double>(std::numeric_limits<float>::max())))
        throw ExportError("a number is not finite, or too large for a 32-bit float");
}

// Rounds the value to a 32-bit float. Throws like RequireSingle.
inline float Single(double value) {
    RequireSingle(value);
    return static_cast<float>(value);
}

}  // namespace exporters
