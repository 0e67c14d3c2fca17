#pragma once

#include <cstddef>
#include <cstdint>

// The automation variant with its published 64-bit layout, as the host hands arguments to a
// callback.
struct VARIANT {
    std::uint16_t vt;  // what the value slot holds
    std::uint16_t reserved[3];
    union {
        const wchar_t* bstrVal;  // NUL-terminated text, the caller's
        std::uint16_t boolVal;   // 0xFFFF is true
        double dblVal;
        std::uint64_t slot[2];
    };
};

static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, bstrVal) == 8);
