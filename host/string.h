#pragma once

#include <atomic>
#include <cstdint>

#include "host/export.h"

namespace Zelk {

// A wide-character text. Copies of a string share one text with a reference count, so that a copy
// takes little time and no memory. Strings in different threads may share a text. The text is
// NUL-terminated. A string that is made or assigned from a pointer copies the characters. This copy
// and operator+= throw std::bad_alloc if memory runs out or if the text would have 2^32 characters
// or more.
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

    // Upper-case and lower-case letters are different.
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
