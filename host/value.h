#pragma once

#include <cstdint>
#include <cstring>

#include "host/export.h"
#include "host/ref.h"
#include "host/string.h"

namespace Zelk {

// A value that is empty, a number, a text or a reference. It is small (16 bytes), because an array
// of values can hold all keys of a motion.
class ZELK_API CValue {
  public:
    enum class Type : std::uint32_t { Empty, Integer, Double, String, Reference };

    CValue() noexcept : type_(Type::Empty), double_(0.0) {}
    CValue(std::int32_t value) noexcept : type_(Type::Integer), integer_(value) {}
    CValue(double value) noexcept : type_(Type::Double), double_(value) {}
    CValue(const CString& value) noexcept;
    CValue(const CRef& value) noexcept : type_(Type::Reference), ref_(value) {}
    CValue(const CValue& other) noexcept : type_(other.type_), double_(0.0) { CopyPayload(other); }
    CValue& operator=(const CValue& other) noexcept {
        if (this != &other) {
            if (type_ == Type::String) ReleaseString();
            type_ = other.type_;
            CopyPayload(other);
        }
        return *this;
    }
    // Avoids a temporary CValue when an array of keys is filled.
    CValue& operator=(double value) noexcept {
        if (type_ == Type::String) ReleaseString();
        type_ = Type::Double;
        double_ = value;
        return *this;
    }
    ~CValue() {
        if (type_ == Type::String) ReleaseString();
    }

    // The host calls this function, because it receives values of any type. The plug-in does not
    // need it, because it only reads doubles and references.
    Type GetType() const noexcept { return type_; }
    // The number; 0 if the value is not a number.
    double AsDouble() const noexcept {
        return type_ == Type::Double ? double_ : type_ == Type::Integer ? integer_ : 0.0;
    }
    // The reference; empty if the value is not a reference.
    CRef AsRef() const noexcept { return type_ == Type::Reference ? ref_ : CRef(); }
    // The text; empty if the value is not a text.
    CString AsString() const noexcept;

  private:
    void CopyPayload(const CValue& other) noexcept {
        if (type_ == Type::String)
            ShareString(other);
        else
            std::memcpy(&payload_, &other.payload_, sizeof(payload_));
    }
    void ShareString(const CValue& other) noexcept;
    void ReleaseString() noexcept;

    Type type_;
    union {
        std::uint64_t payload_;
        std::int32_t integer_;
        double double_;
        CString::Rep* string_;
        CRef ref_;
    };
};

static_assert(sizeof(CValue) == 16);

}  // namespace Zelk
