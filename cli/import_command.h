#pragma once

#include "cli/arguments.h"

namespace cli {

// Imports, writes the outputs, prints. Returns the exit status; throws PluginError where there is
// no plug-in to import with.
int RunImport(const ImportRequest& request);

}  // namespace cli
