// Command lines for a POSIX shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// The word as one that any POSIX shell reads back as it is, on one line whatever it holds. (A word
// with control characters that ends in line feeds loses those.)
std::string ShellWord(std::string_view word);

// The words, separated by spaces.
std::string ShellLine(const std::vector<std::string>& words);

}  // namespace text
