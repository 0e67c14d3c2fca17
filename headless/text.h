// Converts host texts to views and standard strings to host texts.
#pragma once

#include <string>
#include <string_view>

#include "host/string.h"

namespace headless {

// The view is valid as long as `text` is neither changed nor destroyed.
inline std::wstring_view View(const Zelk::CString& text) {
    return {text.GetWideString(), text.Length()};
}

// Only the characters before the first NUL are copied.
inline Zelk::CString Text(const std::wstring& text) {
    return Zelk::CString(text.c_str());
}

}  // namespace headless
