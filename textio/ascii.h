#pragma once

#include <cstddef>

namespace textio {

// Letter case in the files' keywords and names is that of ASCII, whatever the process's locale.
constexpr char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

constexpr bool EqualsIgnoringCase(const char* a, const char* b) {
    while (*a != '\0' && ToLower(*a) == ToLower(*b)) {
        ++a;
        ++b;
    }
    return ToLower(*a) == ToLower(*b);
}

}  // namespace textio
