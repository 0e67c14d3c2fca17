#include "cli/shown_arguments.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace cli {
namespace {

std::span<char> memory;  // of the arguments of main, each of which ends with a NUL byte

}  // namespace

void RememberArguments(int argc, char** argv) {
    memory = {};
    if (argc <= 0) return;
    char* end = argv[0];
    // The system stores the arguments one after the other. If it does not, only those before the
    // first gap are used.
    for (int index = 0; index < argc && argv[index] == end; ++index)
        end += std::strlen(argv[index]) + 1;
    memory = {argv[0], end};
}

void ShowArguments(const std::vector<std::string>& arguments) {
    if (memory.empty()) return;
    std::string line = "zkhost";
    for (const std::string& argument : arguments) {
        line += '\0';
        line += argument;
    }
    // The last byte stays NUL. Otherwise the system would show the environment too.
    const std::size_t shown = line.copy(memory.data(), memory.size() - 1);
    std::fill(memory.begin() + static_cast<std::ptrdiff_t>(shown), memory.end(), '\0');
}

}  // namespace cli
