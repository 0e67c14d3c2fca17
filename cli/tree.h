// Prints the scene as an indented list for an 80-column terminal.
#pragma once

#include "cli/print.h"
#include "headless/scene.h"

namespace cli {

// Prints a line for each object, with its name, its type and its global position at rest. An object
// is printed below its parent and indented further. Long names are shortened. An object that is
// deeper than ten levels is not indented further; its depth is printed as a number.
void PrintTree(const headless::Scene& scene, const Print& print);

}  // namespace cli
