#pragma once

#include "cli/arguments.h"

namespace cli {

// Runs "zkhost command": calls the plug-in's callback, prints its result and writes the JSON record
// if the request has a path for it. Returns the exit status. Throws PluginError if the plug-in
// cannot be loaded.
int RunCommand(const CommandRequest& request);

}  // namespace cli
