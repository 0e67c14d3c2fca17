// Writes Biovision BVH: one section for each model.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes one HIERARCHY and one MOTION for each model, with one row for each frame.
//
// Channels: the root has six, three positions and three rotations. Its OFFSET is 0, because some
// readers add the positions to the OFFSET and others replace it by them; with 0 both get the same
// result. Another joint has three rotations; a joint whose position changes also has three
// positions, which replace its OFFSET. Rotations are in degrees, in the order z, x, y.
//
// Joints: if a model does not have exactly one object directly under it, a root with the model's
// name is added above its objects. A null at the end of a branch is written as an end site if it is
// named X_End under a joint named X and the motion neither drives, moves nor turns it. White space
// and control characters in names become "_".
//
// A model without motion or rate is written as one frame in the base pose.
//
// Returns what was left out. Throws ExportError, also after the sections of earlier models were
// written; what `out` then holds is not a valid file. Errors of `out` are passed on.
Notes WriteBvh(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
