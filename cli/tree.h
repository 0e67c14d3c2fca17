// Prints the scene as an indented list for an 80-column terminal.
#pragma once

#include "cli/print.h"
#include "export/options.h"
#include "headless/scene.h"

namespace cli {

// Prints a line for each object, with its name, its type and its global position at rest. The
// positions are those of outputs: of the options, the scale and the up axis are applied. An object
// is printed below its parent and indented further. Long names are shortened. An object that is
// deeper than ten levels is not indented further; its depth is printed as a number.
void PrintTree(const headless::Scene& scene, const exporters::Options& options, const Print& print);

}  // namespace cli
