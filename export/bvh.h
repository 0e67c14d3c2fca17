// Writes Biovision BVH: one section for each model.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes one HIERARCHY and one MOTION for each model, with one row for each frame.
//
// Channels: the root has three positions and three rotations. The OFFSET of the root is 0. Some
// readers add the positions to the OFFSET, and others ignore the OFFSET of a joint with positions.
// If the OFFSET is 0, all readers get the same result. Every other joint has three rotations. A
// joint whose position changes also has three positions. Readers must use them instead of its
// OFFSET. Rotations are in degrees, in the order z, x, y.
//
// Joints: if a model does not have exactly one object directly under it, a root with the model's
// name is added above its objects. White space and control characters of ASCII become "_" in names.
//
// End sites: a joint is written as an end site if all of these conditions are true:
// - It is an end site of the file or, if the file is not known, it is the end of a chain or a null
//   that has the name of an end site.
// - Its name is the name of its parent with "_End" or with "_End" and a number after it.
// - It has no children, and its parent is a joint.
// - It is not rotated against its parent.
// - No active item of the motion drives it, and its position does not change.
//
// A model without motion, or with a motion that has no rate, is written as one frame in the base
// pose.
//
// Returns notes about what was left out. Throws ExportError, possibly after it has written the
// sections of earlier models. In that case `out` does not hold a valid file. Passes on what `out`
// throws.
Notes WriteBvh(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress = {});

}  // namespace exporters
