// Text between wide strings, a character each, and the bytes that people and files hold.
#pragma once

#include <string>
#include <string_view>

namespace text {

// UTF-8 to wide. A byte that is not part of valid UTF-8 becomes the lone surrogate 0xDC00 + byte,
// so that every file name survives: the reader of the file turns it back into that byte.
std::wstring DecodeUtf8(std::string_view bytes);

// Whether it is one of Unicode's: no surrogate, and nothing beyond the last.
bool IsCharacter(wchar_t character);

// Wide to UTF-8, always valid: surrogates and what lies beyond Unicode become U+FFFD.
std::string EncodeUtf8(std::wstring_view wide);

}  // namespace text
