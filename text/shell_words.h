// Writes command lines for a POSIX shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// Quotes a word so that any POSIX shell reads it back unchanged. The result is on one line,
// whatever the word contains. (Line feeds at the end of a word are lost.)
std::string ShellWord(std::string_view word);

// The words, separated by spaces.
std::string ShellLine(const std::vector<std::string>& words);

}  // namespace text
