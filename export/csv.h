// Writes a table of global positions and rotations as comma-separated values.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes a header row, then one row for each frame. The columns are:
// - "frame": the frame number.
// - "seconds": the time since the first frame.
// - "Hips_px", "Hips_py", "Hips_pz": the global position of the joint "Hips", in scaled units.
// - "Hips_rx", "Hips_ry", "Hips_rz": its global rotation in degrees; x turns first, then y, then z.
// Each joint has these six columns. If there are several models, the name of a joint begins with
// the name of its model: "walk_Hips_px". ColumnNames says how names are changed. The base pose
// alone is written as one row with frame 0 and second 0.
//
// Returns notes about what was left out. Throws ExportError, possibly after it has written some
// rows. In that case `out` does not hold a whole table. Passes on what `out` throws.
Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress = {});

}  // namespace exporters
