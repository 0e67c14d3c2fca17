#pragma once

#include <string>

#include "dataset/request.h"

namespace cli {

// Converts a data set, or prints how. `program` is what this program was called by. Returns the
// exit status; throws UsageError, and PluginError where there is no plug-in to import with.
int RunConvert(const dataset::Request& request, const std::string& program);

}  // namespace cli
