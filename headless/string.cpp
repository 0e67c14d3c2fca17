#include "host/string.h"

#include <cstdint>
#include <cwchar>
#include <limits>
#include <new>

namespace Zelk {

namespace {

constexpr std::uint64_t kMaxLength = std::numeric_limits<std::uint32_t>::max();

std::uint32_t CheckedLength(const wchar_t* text) {
    const std::size_t length = std::wcslen(text);
    if (length > kMaxLength) throw std::bad_alloc();
    return static_cast<std::uint32_t>(length);
}

}  // namespace

CString::Rep* CString::Make(const wchar_t* head, std::uint32_t headLength, const wchar_t* tail,
                            std::uint32_t tailLength) {
    const std::uint64_t length = std::uint64_t{headLength} + tailLength;
    if (length == 0) return nullptr;
    if (length > kMaxLength) throw std::bad_alloc();
    const std::uint64_t bytes = sizeof(Rep) + length * sizeof(wchar_t);
    // No object can be larger than PTRDIFF_MAX bytes. If pointers have 32 bits, a long text could
    // be larger.
    if (bytes > static_cast<std::uint64_t>(PTRDIFF_MAX)) throw std::bad_alloc();
    // sizeof(Rep) already includes the terminating NUL.
    void* memory = ::operator new(static_cast<std::size_t>(bytes));
    Rep* rep = new (memory) Rep{1, static_cast<std::uint32_t>(length), {L'\0'}};
    // The address is computed from `memory`, because the declared length of Rep::text is one.
    auto* text = reinterpret_cast<wchar_t*>(static_cast<char*>(memory) + offsetof(Rep, text));
    if (headLength != 0) std::wmemcpy(text, head, headLength);
    if (tailLength != 0) std::wmemcpy(text + headLength, tail, tailLength);
    text[length] = L'\0';
    return rep;
}

void CString::Release(Rep* rep) noexcept {
    if (rep == nullptr) return;
    if (rep->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    rep->~Rep();
    ::operator delete(rep);
}

CString::CString(const wchar_t* text) {
    if (text != nullptr) rep_ = Make(text, CheckedLength(text), nullptr, 0);
}

CString::CString(const CString& other) noexcept : rep_(other.rep_) {
    if (rep_ != nullptr) rep_->references.fetch_add(1, std::memory_order_relaxed);
}

CString::CString(CString&& other) noexcept : rep_(other.rep_) {
    other.rep_ = nullptr;
}

CString::~CString() {
    Release(rep_);
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp): self-assignment is handled.
CString& CString::operator=(const CString& other) noexcept {
    // The reference count of the new text is raised before the old text is released, so that
    // self-assignment is safe.
    Rep* const newRep = other.rep_;
    if (newRep != nullptr) newRep->references.fetch_add(1, std::memory_order_relaxed);
    Release(rep_);
    rep_ = newRep;
    return *this;
}

CString& CString::operator=(CString&& other) noexcept {
    Rep* const newRep = other.rep_;
    other.rep_ = nullptr;
    Release(rep_);
    rep_ = newRep;
    return *this;
}

CString& CString::operator=(const wchar_t* text) {
    // The old text is released last, because `text` may point into it.
    Rep* const made = text == nullptr ? nullptr : Make(text, CheckedLength(text), nullptr, 0);
    Release(rep_);
    rep_ = made;
    return *this;
}

CString& CString::operator+=(const CString& tail) {
    if (tail.IsEmpty()) return *this;
    if (IsEmpty()) return *this = tail;
    Rep* const made = Make(GetWideString(), Length(), tail.GetWideString(), tail.Length());
    Release(rep_);
    rep_ = made;
    return *this;
}

std::uint32_t CString::Length() const noexcept {
    return rep_ == nullptr ? 0 : rep_->length;
}

const wchar_t* CString::GetWideString() const noexcept {
    return rep_ == nullptr ? L"" : rep_->text;
}

bool CString::operator==(const CString& other) const noexcept {
    if (rep_ == other.rep_) return true;
    const std::uint32_t length = Length();
    return length == other.Length() &&
           std::wmemcmp(GetWideString(), other.GetWideString(), length) == 0;
}

}  // namespace Zelk
