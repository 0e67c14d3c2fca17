#pragma once

#include "cli/arguments.h"

namespace cli {

// Calls the plug-in's callback and prints its result. Returns the exit status. Throws PluginError
// where the plug-in cannot be loaded.
int RunCommand(const CommandRequest& request);

}  // namespace cli
