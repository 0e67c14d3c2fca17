// Replaces control characters by readable escapes.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Whether the character is not shown but controls a terminal, ends a line or changes the direction
// of text.
bool IsControl(wchar_t character);

// Replaces control characters by escapes ("\n", "\x1b", "\u2028"), so that text from a file cannot
// control the terminal on which it is shown. With `keepLineBreaks`, line feeds are not replaced.
std::wstring EscapeControls(std::wstring_view text, bool keepLineBreaks = false);

// Does the same with UTF-8. The result is always valid UTF-8, because each byte that is not part of
// a valid character becomes U+FFFD.
std::string EscapeControls(std::string_view bytes, bool keepLineBreaks = false);

}  // namespace text
