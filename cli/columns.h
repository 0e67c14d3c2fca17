// The width of text on a terminal, in columns. It depends on the current character locale.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Returns how many columns the text takes; an East Asian character takes two.
int DisplayWidth(std::wstring_view text);

// Returns the text, shortened at its end to at most `columns` columns. A shortened text ends in an
// ellipsis. `columns` is at least 1.
std::wstring Elide(std::wstring_view text, int columns);

}  // namespace cli
