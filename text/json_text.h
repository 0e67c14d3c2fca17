// Writes numbers and strings of JSON texts.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Appends the shortest text that reads back as the same double. It always has a fraction or an
// exponent ("5.0", "-0.0"), because many readers would read "5" as an integer. A number that is
// not finite becomes the string "nan", "inf" or "-inf".
void AppendJsonNumber(std::string& out, double number);

// Appends the text as UTF-8, in quotes and with escapes. A code that is no character, and a byte
// that is not part of one, becomes U+FFFD.
void AppendJsonString(std::string& out, std::wstring_view text);
void AppendJsonString(std::string& out, std::string_view utf8);

}  // namespace text
