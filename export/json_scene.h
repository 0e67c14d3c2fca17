// The "scene" member of the record of a run.
// Internal to export/.
#pragma once

#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes `"scene": [...]` and a line break: every object in the order they were made, an object a
// line, a model's actions item by item.
void WriteJsonScene(text::ByteSink& out, const headless::Scene& scene);

}  // namespace exporters
