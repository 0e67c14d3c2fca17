// Refuses scenes with values that no file but the record can hold.
#pragma once

#include "headless/scene.h"

namespace exporters {

// Throws ExportError, naming the first value of the model's base pose or of an active item of
// `motion` (which may be null) that is not a finite number.
void RequireFinite(const headless::Object& model, const headless::ActionSource* motion);

}  // namespace exporters
