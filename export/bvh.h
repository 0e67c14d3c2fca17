// Writes Biovision BVH: one section for each model.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes one HIERARCHY and one MOTION for each model, with one row for each frame.
//
// Channels: the root has three positions and three rotations. Its OFFSET is 0, because some readers
// add the positions to the OFFSET and others use them instead of it. If it is 0, all readers get
// the same result. Every other joint has three rotations. If its position changes, it also has
// three positions, to be used instead of its OFFSET. Rotations are in degrees, in the order z, x,
// y.
//
// Joints: if a model does not have exactly one object directly under it, a root with the model's
// name is added above its objects. A null at the end of a branch is written as an end site if its
// name is X_End (or X_End and a number) under a joint named X, if it is not turned, and if the
// motion neither drives nor moves it. White space and control characters in names become "_".
//
// A model without motion, or with a motion that has no rate, is written as one frame in the base
// pose.
//
// Returns notes about what was left out. Throws ExportError, possibly after it has written the
// sections of earlier models. In that case `out` does not hold a valid file. Passes on what `out`
// throws.
Notes WriteBvh(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
