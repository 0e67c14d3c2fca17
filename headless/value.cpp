#include "host/value.h"

namespace Zelk {

CValue::CValue(const CString& value) noexcept : type_(Type::String), string_(value.rep_) {
    if (string_ != nullptr) string_->references.fetch_add(1, std::memory_order_relaxed);
}

CString CValue::AsString() const noexcept {
    CString text;
    if (type_ == Type::String && string_ != nullptr) {
        string_->references.fetch_add(1, std::memory_order_relaxed);
        text.rep_ = string_;
    }
    return text;
}

void CValue::ShareString(const CValue& other) noexcept {
    string_ = other.string_;
    if (string_ != nullptr) string_->references.fetch_add(1, std::memory_order_relaxed);
}

// NOLINTNEXTLINE(readability-make-member-function-const): this value gives up the text.
void CValue::ReleaseString() noexcept {
    CString::Release(string_);
}

}  // namespace Zelk
