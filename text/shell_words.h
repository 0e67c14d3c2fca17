// Writes command lines for a POSIX shell.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace text {

// Quotes a word for a POSIX shell. The result is always one line. A shell that reads the result
// gets the same word, but without line feeds at the end of the word.
std::string ShellWord(std::string_view word);

// Returns the words as ShellWord quotes them, separated by spaces.
std::string ShellLine(const std::vector<std::string>& words);

}  // namespace text
