#pragma once

#include <string>

#include "dataset/request.h"

namespace cli {

// Converts a data set or, with --plan, prints the command lines that would. `program` is the name
// that they begin with. Returns the exit status. Throws UsageError, and PluginError where the
// plug-in cannot be loaded.
int RunConvert(const dataset::Request& request, const std::string& program);

}  // namespace cli
