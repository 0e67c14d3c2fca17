// The options and arguments of "zkhost check".
#pragma once

#include <optional>
#include <string>

#include "cli/check_request.h"

namespace CLI {
class App;
}  // namespace CLI

namespace cli {

// The words as the user wrote them. CLI11 stores values that need no parsing directly in `request`.
struct CheckWords {
    CheckRequest request;
    std::optional<std::string> as;
};

// Declares all options and arguments.
void DescribeCheck(CLI::App& check, CheckWords& words);
// Parses and checks the values and returns the request. Throws UsageError.
CheckRequest BuildCheckRequest(CheckWords& words);

}  // namespace cli
