// Replaces control characters by readable escapes.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Whether the character controls a terminal or the direction of text instead of being shown.
bool IsControl(wchar_t character);

// Replaces control characters by escapes ("\n", "\x1b", "\u2028"), so that text from a file cannot
// control the terminal on which it is shown. With `keepLineBreaks`, line feeds are not replaced.
std::wstring EscapeControls(std::wstring_view text, bool keepLineBreaks = false);

// The same for UTF-8. The result is valid UTF-8: bytes that are no part of a character become
// U+FFFD.
std::string EscapeControls(std::string_view bytes, bool keepLineBreaks = false);

}  // namespace text
