// Writes binary FBX 7.5.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Each model becomes a Null with a LimbNode for each joint, a skinned body if options.mesh is set,
// and one AnimationStack for each motion that has a rate. The values of a channel's keys are those
// of the scene, rounded to 32-bit floats, at the times of the motion's keys or, if
// options.resampleTo is set, of the samples. The angles of the scene are rotations in the order
// XYZ of FBX. Where they jump although the joint does not, the file has the angles of the same
// rotation that are nearest to those of the key before. The y axis points up, and UnitScaleFactor
// is the known or guessed unit of the first model; centimetres if it is not known. Equal scenes
// make equal files.
//
// Returns notes about what was left out. Throws ExportError, always before anything is written, and
// what `progress` throws. Passes on what the sink throws.
Notes WriteFbx(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress = {});

}  // namespace exporters
