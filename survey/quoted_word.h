// Quotes words of a file in messages.
#pragma once

#include <string>
#include <string_view>

namespace survey {

// The word in quotes, as UTF-8. Long words are cut off, and control characters become blanks. A
// word that is not UTF-8 is read as Windows-1252.
std::string Quoted(std::string_view word);

}  // namespace survey
