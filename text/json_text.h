// The pieces of JSON text that everything else is put together from.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Appends the number so that it reads back to the same double, as a number with a fraction or an
// exponent ("5.0", "-0.0"), since readers make integers of others. What is not finite becomes the
// string "nan", "inf" or "-inf".
void AppendJsonNumber(std::string& out, double number);

// Appends the text in quotes, as UTF-8.
void AppendJsonString(std::string& out, std::wstring_view text);
void AppendJsonString(std::string& out, std::string_view utf8);

}  // namespace text
