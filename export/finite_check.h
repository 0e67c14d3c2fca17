// Refuses infinite values and NaN, which only the record of a run can hold.
// Internal to export/.
#pragma once

#include <cmath>

#include "headless/scene.h"

namespace exporters {

// std::isfinite as one function, which algorithms can be given.
inline bool IsFinite(double value) {
    return std::isfinite(value);
}

// Throws ExportError, naming the first value of the model's base pose or of an active item of
// `motion` (which may be null) that is not a finite number.
void RequireFinite(const headless::Object& model, const headless::ActionSource* motion);

}  // namespace exporters
