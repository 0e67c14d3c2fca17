// The command line that the system shows for this process, for example in the list of "ps".
#pragma once

#include <string>
#include <vector>

namespace cli {

// Remembers where the arguments of main are.
void RememberArguments(int argc, char** argv);

// Replaces the command line by "zkhost" and these arguments. What does not fit into the memory of
// the arguments of main is left out. The arguments of main must not be used any more. A process of
// "zkhost convert" calls it, so that users can see which file it imports.
void ShowArguments(const std::vector<std::string>& arguments);

}  // namespace cli
