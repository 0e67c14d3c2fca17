// Describes where an output comes from.
// Internal to export/.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "export/options.h"

namespace exporters {

// Returns an object with these members, of which the first four are left out if they are not known:
// - "sourceFiles": the names of the files, without their folders;
// - "sources": for each file an object with "name" and, if known, "bytes" and "sha256";
// - "sourceFormat": the name of the format;
// - "tool": name and version of the program;
// - "options": the options of the import and of the output.
nlohmann::json ProvenanceJson(const Options& options);

}  // namespace exporters
