// The options and arguments of "zkhost view".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/import_options.h"

namespace CLI {
class App;
}  // namespace CLI

namespace cli {

// The words as the user wrote them.
struct ViewWords {
    ImportWords import;
    std::vector<std::string> files;
    bool noOpen = false;
};

// Declares all options and arguments.
void DescribeView(CLI::App& view, ViewWords& words);
// Parses all values and returns the request. If an .amc file has no .asf file before it, looks for
// one in its folder. Throws UsageError.
ViewRequest BuildViewRequest(ViewWords& words);

}  // namespace cli
