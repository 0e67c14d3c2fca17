// Writes the poses of all frames as NumPy arrays.
// Internal to export/.
#pragma once

#include <string>
#include <vector>

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes an archive of these arrays. F is the number of frames and J the number of joints, of all
// models together. Numbers are float64, or float32 with options.float32 for the first four arrays.
// - "positions" (F, J, 3), "quaternions" (F, J, 4): global, scaled and turned. Quaternions are in
//   the order x, y, z, w. PoseArrays says which of a rotation's two quaternions is written.
// - "local_positions", "local_quaternions": the same as seen from the parent joint.
// - "offsets" (J, 3): the positions in the base pose, as seen from the parent joint.
// - "parents" (J, int32): the index of the parent joint, or -1. A parent comes before its children.
// - "names" (J, text): all different. If there are several models, the name of the model comes
//   first, as in "walk.Hips". "source_names": the names in the file.
// - "is_end" (J, bool): whether the joint is an end site.
// - "times" (F): seconds from the first frame. "frame_numbers" (F, int64): see Timeline::Number.
// - "fps": frames per second, or 0 for the base pose alone.
// - "unit": metres per unit of the positions, or 0 if it is not known. "up": "x", "y" or "z".
// - "findings", "provenance": texts of JSON. `findings` has the text of one object for each.
// The steps between the frames are equal; missing frames are filled in. If there is no motion, the
// only frame is the base pose.
//
// Needs memory for all arrays. Returns notes about what was left out. Throws ExportError, always
// before anything is written. Passes on what `out` throws.
Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const std::vector<std::string>& findings, const Progress& progress = {});

}  // namespace exporters
