// Writes glTF 2.0, as one binary file (.glb) or as a JSON file with a binary file (.gltf, .bin).
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Each model becomes a holder node with its joints below it, one skin of these joints with the base
// pose as its bind pose, a mesh of bone shapes (with options.mesh), and one animation for each of
// its motions. An animation has the motion's name and holds all of its keys, or its samples with
// options.resampleTo. A motion without a rate has no animation. Names stay as they are; a name that
// viewers are known to change is repeated in the node's extras. The asset's extras say where the
// file comes from.
//
// Returns what was left out. Throws ExportError before anything is written; errors of the sink are
// passed on.
Notes WriteGlb(text::ByteSink& out, const headless::Scene& scene, const Options& options);

// Writes the same as two files: the JSON to `out`, the buffer to `binary`. The JSON file refers to
// the other file by `binaryName`.
Notes WriteGltf(text::ByteSink& out, text::ByteSink& binary, std::string_view binaryName,
                const headless::Scene& scene, const Options& options);

}  // namespace exporters
