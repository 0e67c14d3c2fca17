// Runs "zkhost view".
#pragma once

#include "cli/arguments.h"

namespace cli {

// Imports the takes, writes a page that shows them together, prints its path to stdout and opens
// it. Takes that cannot be imported are left out. Returns the exit status. Throws PluginError, and
// std::runtime_error if the folder of the pages cannot be made.
int RunView(const ViewRequest& request);

}  // namespace cli
