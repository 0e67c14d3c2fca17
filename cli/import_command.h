#pragma once

#include "cli/arguments.h"

namespace cli {

// Imports the files, writes the outputs and prints the summary. Returns the exit status. Throws
// PluginError if the plug-in cannot be loaded.
int RunImport(const ImportRequest& request);

}  // namespace cli
