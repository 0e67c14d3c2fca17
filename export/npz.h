// Writes a table of global positions and rotations as numpy arrays.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes an archive of these arrays:
//   positions    float64, frames x joints x 3: global positions, in scaled units
//   quaternions  float64, frames x joints x 4: global rotations, w last; of the two quaternions of
//   a
//                rotation the one nearer to that of the frame before
//   offsets      float64, joints x 3: positions in the base pose, as seen from the parent joint
//   parents      int32, joints: the index of the parent joint, which comes before its children, or
//   -1 names        text, joints; with several models "walk.Hips", the model's name first fps
//   float64, one number: frames per second, or 0 for a pose
// The steps between the frames are equal; missing frames are filled in. Without motion there is one
// frame, the base pose.
//
// Returns what was left out. Throws ExportError before anything is written; errors of `out` are
// passed on.
Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
