#pragma once

#include <functional>
#include <string>
#include <vector>

#include "dataset/request.h"

namespace cli {

// Converts a data set. With --plan, converts nothing, but prints the command line of each import.
// Each of these lines begins with `program`, the name by which the user called zkhost. `runImport`
// does what this program does with the arguments of an import. Returns the exit status. Throws
// UsageError, and PluginError if the plug-in cannot be loaded.
int RunConvert(const dataset::Request& request, const std::string& program,
               const std::function<int(const std::vector<std::string>&)>& runImport);

}  // namespace cli
