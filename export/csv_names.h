// Writes a table that says which joint each column of a CSV output belongs to.
// Part of the public surface of the library.
#pragma once

#include <string>

#include "export/options.h"
#include "headless/scene.h"
#include "text/api.h"
#include "text/byte_sink.h"

namespace exporters {

// Writes a header row, then one row for each joint, as comma-separated values. The columns are:
// - "joint": the name of the joint in the file;
// - "column": what the names of its columns begin with, such as "Hips" of "Hips_px";
// - "parent": the same of its parent joint; empty if it has none;
// - "end_site": 1 if the joint is an end site, otherwise 0.
// Fields are quoted as in RFC 4180. Returns an empty text, or one line that says why the scene
// cannot be written. Passes on what `out` throws.
ZKMOCAP_API std::string WriteCsvNames(text::ByteSink& out, const headless::Scene& scene,
                                      const Options& options);

}  // namespace exporters
