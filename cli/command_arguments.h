// The options and arguments of "zkhost command".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"

namespace CLI {
class App;
}  // namespace CLI

namespace cli {

// The words as the user wrote them. CLI11 stores texts that need no parsing directly in `request`.
struct CommandWords {
    CommandRequest request;
    std::vector<std::string> arguments;
    std::optional<std::string> progress;
    std::optional<std::string> threads;
};

// Declares all options and arguments.
void DescribeCommand(CLI::App& command, CommandWords& words);
// Parses all values and returns the request. Throws UsageError.
CommandRequest BuildCommandRequest(CommandWords& words);

}  // namespace cli
