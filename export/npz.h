// A table as numpy arrays.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// An archive of the arrays
//   positions    frames x joints x 3, in the scene
//   quaternions  frames x joints x 4, in the scene, w last, the signs nearest to the frame before
//   offsets      joints x 3, in the base pose, seen from the parent
//   parents      joints, -1 where there is none; every parent comes before its children
//   names        joints; with several models each begins with the model's: "walk.Hips"
//   fps          one number, frames per second; 0 for a pose
// of 64-bit numbers (parents: 32-bit, names: text). One frame, the base pose, where there is no
// motion. Missing frames are filled in, so that all are one step apart.
Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
