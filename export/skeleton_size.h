// Measures how large a skeleton is.
// Internal to export/.
#pragma once

#include <span>

#include "headless/transform.h"

namespace exporters {

// Returns the diagonal of the box around the origins of the transforms. Returns 0 if there are
// none, or if the diagonal is not finite.
double BoxDiagonal(std::span<const headless::Transform> globals);

}  // namespace exporters
