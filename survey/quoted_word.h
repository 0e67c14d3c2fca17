// Quotes words of a file in messages.
#pragma once

#include <string>
#include <string_view>

namespace survey {

// Returns the word in double quotes, as UTF-8. A word of more than 40 bytes is cut off, and "..."
// is appended. Control characters become blanks. A word that is not UTF-8 is read as Windows-1252.
std::string Quoted(std::string_view word);

}  // namespace survey
