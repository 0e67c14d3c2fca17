#pragma once

#include <cstddef>
#include <cstdint>

// The automation variant with its published 64-bit layout. The host passes the arguments of a
// callback in such records.
struct VARIANT {
    std::uint16_t vt;  // the type code; it says which union member is set
    std::uint16_t reserved[3];
    union {
        const wchar_t* bstrVal;  // NUL-terminated text, owned by the caller
        std::uint16_t boolVal;   // 0 is false, 0xFFFF is true
        double dblVal;
        std::uint64_t slot[2];  // makes the union 16 bytes long
    };
};

static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, bstrVal) == 8);
