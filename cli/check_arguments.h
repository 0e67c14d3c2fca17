// The options and arguments of "zkhost check".
#pragma once

#include "cli/check_request.h"

namespace CLI {
class App;
}  // namespace CLI

namespace cli {

// Declares all options and arguments. CLI11 stores their values in `request`.
void DescribeCheck(CLI::App& check, CheckRequest& request);
// Checks the values and returns the request. Throws UsageError.
CheckRequest BuildCheckRequest(const CheckRequest& request);

}  // namespace cli
