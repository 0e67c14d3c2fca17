// Writes command lines for a POSIX shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// Quotes a word so that any POSIX shell reads it back unchanged. The result is always one line. The
// shell loses only line feeds at the end of a word.
std::string ShellWord(std::string_view word);

// Returns the words as ShellWord quotes them, separated by spaces.
std::string ShellLine(const std::vector<std::string>& words);

}  // namespace text
