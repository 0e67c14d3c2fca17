// Writes glTF 2.0, as one binary file (.glb) or as a JSON file with a binary file (.gltf, .bin).
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Each model becomes:
// - a holder node, with the nodes of the joints under it;
// - one skin with these joints, whose bind pose is the base pose;
// - a mesh of bone shapes, if options.mesh is set;
// - the motions that have a rate, with the values at all frames that have keys or, if
//   options.resampleTo is set, at the samples. If each model has at most one motion, and all
//   motions have the same rate and the same first frame, they are one animation with the name of
//   the first motion. Otherwise, or if options.animationPerModel is set, each motion is an
//   animation with its own name.
// Names are not changed. If a name is one that viewers change, the node's extras repeat it. The
// asset's extras say which files the scene comes from.
//
// Returns notes about what was left out. Throws ExportError, always before anything is written.
// Passes on what the sink throws.
Notes WriteGlb(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress = {});

// Writes the same as two files: the JSON to `out`, the buffer to `binary`. The JSON refers to the
// file with the buffer by `binaryName`.
Notes WriteGltf(text::ByteSink& out, text::ByteSink& binary, std::string_view binaryName,
                const headless::Scene& scene, const Options& options,
                const Progress& progress = {});

}  // namespace exporters
