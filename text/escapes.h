// Control characters as a person can read them.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Whether a terminal would do something else than show it.
bool IsControl(wchar_t character);

// The text with control characters written out ("\n", "\x1b", "\u2028"), so that no text from a
// file steers a terminal. With `keepLineBreaks`, line feeds stay.
std::wstring EscapeControls(std::wstring_view text, bool keepLineBreaks = false);

// The same of UTF-8; the result is valid UTF-8.
std::string EscapeControls(std::string_view bytes, bool keepLineBreaks = false);

}  // namespace text
