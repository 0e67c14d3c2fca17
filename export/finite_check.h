// Refuses infinite values and NaN. Of all outputs only the record of a run can hold them.
// Internal to export/.
#pragma once

#include <cmath>

#include "headless/scene.h"

namespace exporters {

// std::isfinite without overloads, so that it can be passed to algorithms.
inline bool IsFinite(double value) {
    return std::isfinite(value);
}

// Throws ExportError if a value of the model at rest, or a value or key time of an active item of
// `motion`, is not finite. The message names the first such value. `motion` may be null.
void RequireFinite(const headless::Object& model, const headless::ActionSource* motion);

}  // namespace exporters
