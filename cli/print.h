#pragma once

#include <functional>
#include <string_view>

namespace cli {

// A function that prints a text.
using Print = std::function<void(std::string_view)>;

Print ToStdout();
// Returns a function that writes each text to stderr at once, without a buffer.
Print ToStderr();

// Prints "zkhost: message" to stderr.
void PrintError(std::string_view message);

// Writes the buffered text of stdout. Returns false if this text, or any text that was printed to
// stdout before, could not be written.
bool FlushStdout();

}  // namespace cli
