#pragma once

#include <atomic>
#include <cstdint>

#include "host/export.h"

namespace Zelk {

// An immutable wide-character text, shared between copies: copying costs a counter, assigning
// copies the text once. Always NUL-terminated; a default-constructed one is empty.
class ZELK_API CString {
  public:
    CString() noexcept = default;
    // `text` may be null, which gives an empty string.
    CString(const wchar_t* text);
    CString(const CString& other) noexcept;
    CString(CString&& other) noexcept;
    ~CString();

    CString& operator=(const CString& other) noexcept;
    CString& operator=(CString&& other) noexcept;
    CString& operator=(const wchar_t* text);
    CString& operator+=(const CString& tail);

    bool IsEmpty() const noexcept { return Length() == 0; }
    // Number of wide characters, without the terminating NUL.
    std::uint32_t Length() const noexcept;
    // Never null; valid until this string is changed or destroyed.
    const wchar_t* GetWideString() const noexcept;

    // Exact comparison, character by character.
    bool operator==(const CString& other) const noexcept;

  private:
    friend class CValue;
    struct Rep {
        std::atomic<std::uint32_t> references;
        std::uint32_t length;
        wchar_t text[1];
    };
    static Rep* Make(const wchar_t* head, std::uint32_t headLength, const wchar_t* tail,
                     std::uint32_t tailLength);
    static void Release(Rep* rep) noexcept;

    Rep* rep_ = nullptr;
};

inline CString operator+(CString head, const CString& tail) {
    head += tail;
    return head;
}

}  // namespace Zelk
