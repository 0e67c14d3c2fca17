// Measures and shortens text by its width on a terminal, in columns. The width of a character
// depends on the current character locale.
#pragma once

#include <string>
#include <string_view>

namespace cli {

// Returns how many columns the text takes; an East Asian character takes two.
int DisplayWidth(std::wstring_view text);

// Returns the text if it is at most `columns` wide. If the text is wider, cuts its end off and adds
// an ellipsis, so that the result is at most `columns` wide. `columns` must be at least 1.
std::wstring Elide(std::wstring_view text, int columns);

}  // namespace cli
