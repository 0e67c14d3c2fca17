// The scene as an indented list for an 80-column terminal.
#pragma once

#include "cli/print.h"
#include "headless/scene.h"

namespace cli {

// Prints every object under its parent with its type and its place in the scene at rest. Long names
// are cut; from a certain depth on a number stands for the indentation, so that lines stay short.
void PrintTree(const headless::Scene& scene, const Print& print);

}  // namespace cli
