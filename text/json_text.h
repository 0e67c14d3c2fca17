// Writes numbers and strings as JSON.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Appends the shortest text that reads back as the same double. It always has a fraction or an
// exponent ("5.0", "-0.0"), because many readers would read "5" as an integer. A number that is
// not finite becomes the string "nan", "inf" or "-inf".
void AppendJsonNumber(std::string& out, double number);

// Appends the text as UTF-8, in quotes and with escapes. A code that is no character becomes
// U+FFFD. A byte that is not part of a valid UTF-8 character becomes U+FFFD too.
void AppendJsonString(std::string& out, std::wstring_view text);
void AppendJsonString(std::string& out, std::string_view utf8);

}  // namespace text
