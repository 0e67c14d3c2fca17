#pragma once

#include <cstddef>

namespace textio {

// Comparison of keywords and names. Only the letters of ASCII have two cases, in every locale.
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
