#pragma once

#include <string>

#include "dataset/request.h"

namespace cli {

// Converts a data set. With --plan, only prints the command lines of the imports; they begin with
// the program's name `program`. Returns the exit status. Throws UsageError, and PluginError if the
// plug-in cannot be loaded.
int RunConvert(const dataset::Request& request, const std::string& program);

}  // namespace cli
