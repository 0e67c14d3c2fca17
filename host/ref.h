#pragma once

#include <cstdint>

#include "host/export.h"

namespace Zelk {

// A reference to something in the host: an object, an action, a group, a property, the user
// interface, or a part of one of them. Parts are, for example, a local kinematic state, a parameter
// and an item of an action. A reference is cheap to copy and owns nothing. When an object is
// deleted, every reference to it becomes invalid. The id of a deleted object is never used again.
class CRef {
  public:
    constexpr CRef() = default;
    // Only the host calls this constructor. `object` is an id, counted from 1; 0 refers to nothing.
    // `part` is the number of a part; 0 is the object itself.
    constexpr CRef(std::uint32_t object, std::uint32_t part) : object_(object), part_(part) {}
    constexpr std::uint32_t Object() const { return object_; }
    constexpr std::uint32_t Part() const { return part_; }
    constexpr bool operator==(const CRef&) const = default;

  private:
    std::uint32_t object_ = 0;
    std::uint32_t part_ = 0;
};

// The base class of all handles. A handle is a reference with functions. The functions are the
// operations that the host offers for what the handle refers to.
// The operations of an empty handle do nothing; they return an empty result or a failing status.
class ZELK_API CBase {
  public:
    CBase() = default;
    explicit CBase(const CRef& ref) : ref_(ref) {}

    // Whether the handle refers to something that still exists.
    bool IsValid() const;
    // Makes the handle empty. The object that it referred to does not change.
    void ResetObject() { ref_ = CRef(); }
    CRef GetRef() const { return ref_; }

  protected:
    CRef ref_;
};

}  // namespace Zelk
