#pragma once

#include <string>
#include <string_view>

namespace text {

// Converts a UTF-8 name to a form in which names that differ only in letter case are equal, as on a
// file system that ignores case. The result does not depend on the locale.
std::wstring FoldCase(std::string_view name);

}  // namespace text
