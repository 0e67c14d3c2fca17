// Runs the program for one command line.
#pragma once

#include <span>
#include <string>

namespace cli {

// Does what zkhost does with these arguments, which do not include the program's name. `program` is
// that name. Prints errors, flushes the standard output and returns the exit status.
int RunArguments(const std::string& program, std::span<const char* const> arguments);

}  // namespace cli
