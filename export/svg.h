// Draws a contact sheet: one picture that shows what happens in a take.
// Internal to export/.
#pragma once

#include <string>
#include <vector>

#include "export/options.h"
#include "export/progress.h"
#include "headless/scene.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes an SVG picture (SVG 1.1) with up to eight poses on one ground line, the path from above,
// the name of the model, frames, seconds, rate and height, and `codes`, the codes of findings. It
// has at most 60 kB: if the figure has very many joints, only the longest bones are drawn. Its
// colours follow the reader's choice of light or dark. Left limbs are blue and right ones orange.
// The same scene gives the same bytes.
//
// Returns notes about what was left out. Throws ExportError, always before anything is written, and
// what `out` and `progress` throw.
Notes WriteSvg(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const std::vector<std::string>& codes, const Progress& progress = {});

}  // namespace exporters
