// Text between the host's wide strings and the bytes that people and files hold.
#pragma once

#include <string>
#include <string_view>

#include "host/string.h"

namespace app {

// UTF-8 to wide. A byte that is not part of valid UTF-8 becomes the lone surrogate 0xDC00 + byte,
// so that every file name survives: the reader of the file turns it back into that byte.
std::wstring DecodeUtf8(std::string_view bytes);

// Whether it is one of Unicode's: no surrogate, and nothing beyond the last.
bool IsCharacter(wchar_t character);

// Wide to UTF-8, always valid: surrogates and what lies beyond Unicode become U+FFFD.
std::string EncodeUtf8(std::wstring_view text);
std::string EncodeUtf8(const Zelk::CString& text);

// The wide text behind a host string; valid as long as that string is.
std::wstring_view View(const Zelk::CString& text);

// Whether a terminal would do something else than show it.
bool IsControl(wchar_t character);

// Control characters as a person can read them ("\n", "\x1b", "\u2028"), so that no text from a
// file steers a terminal. With `keepLineBreaks`, line feeds stay.
std::wstring EscapeControls(std::wstring_view text, bool keepLineBreaks = false);

// Columns on a terminal, East Asian characters counting two, by the current character locale.
int DisplayWidth(std::wstring_view text);

// The text, cut at the end to at most `columns` columns, the last of them an ellipsis where
// something was cut. `columns` is at least 1.
std::wstring Elide(std::wstring_view text, int columns);

}  // namespace app
