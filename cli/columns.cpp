#include "cli/columns.h"

#include <cstddef>
#include <cwchar>

namespace cli {
namespace {

constexpr wchar_t kEllipsis = L'\x2026';

// Returns the width in columns. A control character, for which wcwidth returns -1, counts as 1.
int WidthOf(wchar_t character) {
    const int width = wcwidth(character);
    return width < 0 ? 1 : width;
}

}  // namespace

int DisplayWidth(std::wstring_view text) {
    int width = 0;
    for (const wchar_t character : text)
        width += WidthOf(character);
    return width;
}

std::wstring Elide(std::wstring_view text, int columns) {
    int width = 0;
    // How many characters fit if one column is kept for the ellipsis.
    std::size_t fitting = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        width += WidthOf(text[index]);
        if (width < columns) fitting = index + 1;
        if (width > columns) return std::wstring(text.substr(0, fitting)) + kEllipsis;
    }
    return std::wstring(text);
}

}  // namespace cli
