// The scene as an indented list for an 80-column terminal.
#pragma once

#include "cli/print.h"
#include "headless/scene.h"

namespace cli {

// Prints every object below its parent, with its type and its global position at rest. To keep
// lines short, long names are shortened, and below a depth of ten the depth is printed as a number
// instead of further indentation.
void PrintTree(const headless::Scene& scene, const Print& print);

}  // namespace cli
