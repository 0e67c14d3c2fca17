#pragma once

#include <string>

#include "app/convert/convert_request.h"

namespace app {

// Converts a data set, or prints how. `program` is what this program was called by. Returns the
// exit status; throws UsageError, and PluginError where there is no plug-in to import with.
int RunConvert(const ConvertRequest& request, const std::string& program);

}  // namespace app
