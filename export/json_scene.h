// Writes the member "scene" of the record of a run.
// Internal to export/.
#pragma once

#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes `"scene": [...]` and a line break. The objects are in the order in which they were
// created. Each object and each item of an action begins a line.
void WriteJsonScene(text::ByteSink& out, const headless::Scene& scene, const Progress& progress);

}  // namespace exporters
