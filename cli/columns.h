// Text in the columns of a terminal, by the current character locale.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Columns that the text takes; East Asian characters take two.
int DisplayWidth(std::wstring_view text);

// The text, cut at the end to at most `columns` columns, the last of them an ellipsis where
// something was cut. `columns` is at least 1.
std::wstring Elide(std::wstring_view text, int columns);

}  // namespace cli
