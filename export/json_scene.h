// Writes the member "scene" of the record of a run.
// Internal to export/.
#pragma once

#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes `"scene": [...]` and a line break. The objects are in the order in which they were made.
// Each object begins a line, and so does each item of a model's actions.
void WriteJsonScene(text::ByteSink& out, const headless::Scene& scene);

}  // namespace exporters
