// Writes a table of global positions and rotations as comma-separated values.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes a header row, then one row for each frame. Its columns are "frame", the frame number;
// "seconds", the time since the first frame; and six for each joint: "Hips.px", "Hips.py" and
// "Hips.pz", the global position in scaled units, then "Hips.rx", "Hips.ry" and "Hips.rz", the
// global rotation in degrees (x turns first, then y, then z). With several models the names of
// joints begin with the name of their model: "walk.Hips.px". Names with commas, quotes or line
// breaks are quoted as in RFC 4180. A pose is one row with frame 0 and second 0.
//
// Returns what was left out. Throws ExportError, also after some rows were written; what `out` then
// holds is not a whole table. Errors of `out` are passed on.
Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
