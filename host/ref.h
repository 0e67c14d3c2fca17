#pragma once

#include <cstdint>

#include "host/export.h"

namespace Zelk {

// A reference to something the scene owns: an object, or a part of one (its local kinematic state,
// a parameter, an item of an action). It is cheap to copy and owns nothing. When the object is
// deleted, every reference to it becomes invalid; its id is never used again.
class CRef {
  public:
    constexpr CRef() = default;
    // For the host only. `object` is an id, counted from 1; 0 refers to nothing. `part` is 0 for
    // the object itself.
    constexpr CRef(std::uint32_t object, std::uint32_t part) : object_(object), part_(part) {}
    constexpr std::uint32_t Object() const { return object_; }
    constexpr std::uint32_t Part() const { return part_; }
    constexpr bool operator==(const CRef&) const = default;

  private:
    std::uint32_t object_ = 0;
    std::uint32_t part_ = 0;
};

// The base class of all handles. An empty handle may be used everywhere: its operations do nothing
// and return an empty result or a failing status.
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
