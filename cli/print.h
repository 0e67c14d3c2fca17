#pragma once

#include <functional>
#include <string_view>

namespace cli {

// Where text for people goes.
using Print = std::function<void(std::string_view)>;

Print ToStdout();
// Each text in one write, at once.
Print ToStderr();

// "zkhost: message" on stderr.
void PrintError(std::string_view message);

// Writes out what stdout still buffers; false when anything printed there was lost.
bool FlushStdout();

}  // namespace cli
