// Refuses infinite values and NaN. The record of a run is the only output that can hold them.
// Internal to export/.
#pragma once

#include <cmath>

#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

// std::isfinite without overloads, so that it can be passed to algorithms.
inline bool IsFinite(double value) {
    return std::isfinite(value);
}

// Whether all numbers of the transform are finite.
bool HoldsFiniteNumbers(const headless::Transform& transform);

// Checks the values at rest of the model and of all objects under it, and the values and key times
// of the active items of `motion`. Throws ExportError if one of them is not finite. The message
// names the first such value. `motion` may be null.
void RequireFinite(const headless::Object& model, const headless::ActionSource* motion);

}  // namespace exporters
