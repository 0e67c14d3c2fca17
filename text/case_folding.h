#pragma once

#include <string>
#include <string_view>

namespace text {

// The name as a file system that ignores case would compare it. The same in every locale.
std::wstring FoldCase(std::string_view name);

}  // namespace text
