// Writes numbers and strings of JSON texts.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Appends the shortest text that reads back as the same double. It always has a fraction or an
// exponent ("5.0", "-0.0"), because readers turn other numbers into integers. A number that is not
// finite becomes the string "nan", "inf" or "-inf".
void AppendJsonNumber(std::string& out, double number);

// Appends the text in quotes, as UTF-8. Codes and bytes that are no characters become U+FFFD.
void AppendJsonString(std::string& out, std::wstring_view text);
void AppendJsonString(std::string& out, std::string_view utf8);

}  // namespace text
