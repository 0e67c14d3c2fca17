// Biovision BVH: a section for each model.
// Internal to export/.
#pragma once

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes one HIERARCHY and MOTION for each model, a row for each frame. The root has six channels
// and an OFFSET of 0, so that readers that add positions to the OFFSET and readers that replace it
// by them agree; other joints have rotations in the order z, x, y, and positions (which replace the
// OFFSET) where they move. A model that has several objects, or none, directly under it gets a root
// of its own name above them. Children named X_End of a joint X that never turn are end sites.
// White space and control characters in names become "_". A model without motion or rate is written
// as one frame in the base pose. Throws ExportError, also after earlier models were written; what
// `out` holds is then no file.
Notes WriteBvh(text::ByteSink& out, const headless::Scene& scene, const Options& options);

}  // namespace exporters
