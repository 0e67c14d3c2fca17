#pragma once

#include <cstddef>

namespace textio {

// Functions that compare keywords and names without regard to upper and lower case. In every
// locale, only ASCII letters are treated as having two cases.
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
