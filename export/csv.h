// A table as comma-separated values.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// One header row, then one row for each frame: its number, its time in seconds from the first on,
// and six columns for each joint: "Hips.px", "Hips.py", "Hips.pz", the position in the scene, and
// "Hips.rx", "Hips.ry", "Hips.rz", the rotation in degrees (x turns first). Names with commas,
// quotes or line breaks are quoted as RFC 4180 says. With several models the names of
// joints begin with the model's: "walk.Hips.px".
Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
