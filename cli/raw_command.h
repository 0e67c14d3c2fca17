#pragma once

#include "cli/arguments.h"

namespace cli {

// Calls the plug-in's callback and prints what it returned. Returns the exit status; throws
// PluginError where there is no plug-in to call.
int RunCommand(const CommandRequest& request);

}  // namespace cli
