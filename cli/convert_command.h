#pragma once

#include <string>

#include "dataset/request.h"

namespace cli {

// Converts a data set. With --plan, converts nothing, but prints the command line of each import.
// Each of these lines begins with `program`, the name by which the user called zkhost. Returns the
// exit status. Throws UsageError, and PluginError if the plug-in cannot be loaded.
int RunConvert(const dataset::Request& request, const std::string& program);

}  // namespace cli
