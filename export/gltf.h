// glTF 2.0, as one binary file, or as a JSON file and a binary file.
// Internal to export/.
#pragma once

#include <string>
#include <string_view>

#include "export/options.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Each model becomes a holder node with its joints below it, one skin of those joints, bound in the
// base pose, a body of bone shapes on it (options.mesh), and an animation for each of its motions,
// named after it, with every key. Motions without a rate, and models without motion, keep the base
// pose. Names stay as they are; one that viewers are known to change is repeated in the node's
// extras. The asset's extras say where the file comes from.
// Throws ExportError before anything is written.
Notes WriteGlb(text::ByteSink& out, const headless::Scene& scene, const Options& options);

// The same in two files; `binaryName` is the name by which the JSON file refers to the other.
Notes WriteGltf(text::ByteSink& out, text::ByteSink& binary, std::string_view binaryName,
                const headless::Scene& scene, const Options& options);

}  // namespace exporters
