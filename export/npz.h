// Writes a table of global positions and rotations as numpy arrays.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes an archive of these arrays:
// - "positions": float64, frames x joints x 3. The global positions, in scaled units.
// - "quaternions": float64, frames x joints x 4. The global rotations, in the order x, y, z, w.
//   Each rotation has two quaternions. The one that is nearer to the quaternion of the previous
//   frame is written.
// - "offsets": float64, joints x 3. The positions in the base pose, as seen from the parent joint.
// - "parents": int32, joints. The index of the parent joint, or -1 if there is none. A parent
//   comes before its children.
// - "names": text, joints. If there are several models, the name of the model comes first, as in
//   "walk.Hips".
// - "fps": float64, one number. The frames per second, or 0 for the base pose alone.
// The steps between the frames are equal; missing frames are filled in. If there is no motion, the
// only frame is the base pose.
//
// Returns notes about what was left out. Throws ExportError, always before anything is written.
// Passes on what `out` throws.
Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
