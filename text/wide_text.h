// Converts text between UTF-8 and wide strings, which have one element for each character.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Converts UTF-8 to a wide string. A byte that is not part of valid UTF-8 becomes the lone
// surrogate 0xDC00 + byte. When the importers open a file, they turn such a surrogate back into its
// byte. Every file name can therefore be used.
std::wstring DecodeUtf8(std::string_view bytes);

// Whether the code is a character of Unicode: it is no surrogate and not above U+10FFFF.
bool IsCharacter(wchar_t character);

// Converts a wide string to valid UTF-8. Codes that are no characters become U+FFFD.
std::string EncodeUtf8(std::wstring_view wide);

}  // namespace text
