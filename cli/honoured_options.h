// Checks that the options for outputs have an effect.
#pragma once

#include <vector>

#include "export/formats.h"

namespace CLI {
class App;
}  // namespace CLI

namespace cli {

// Throws UsageError if the user gave `command` an option that none of these formats honours; the
// message names those that do. `formats` are the formats of the outputs, and may be empty. `tree`
// says that the command prints the tree of the scene, which honours some options too.
void RequireHonoured(const CLI::App& command, const std::vector<const exporters::Format*>& formats,
                     bool tree);

}  // namespace cli
