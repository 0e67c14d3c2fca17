#pragma once

#include <cstdint>

#include "host/export.h"

namespace Zelk {

// A reference to something the scene owns: an object, or a part of one (its local kinematic state,
// a parameter, an item of an action source). Cheap to copy, owns nothing. Once the scene deletes
// the object every reference to it is invalid; an identity is never given out twice.
class CRef {
  public:
    constexpr CRef() = default;
    // For the host: `object` counts from 1 (0 refers to nothing), `part` 0 is the object itself.
    constexpr CRef(std::uint32_t object, std::uint32_t part) : object_(object), part_(part) {}
    constexpr std::uint32_t Object() const { return object_; }
    constexpr std::uint32_t Part() const { return part_; }
    constexpr bool operator==(const CRef&) const = default;

  private:
    std::uint32_t object_ = 0;
    std::uint32_t part_ = 0;
};

// The root of all handles. An empty handle is legal everywhere: what is asked of it does nothing
// and returns an empty result or a failing status.
class ZELK_API CBase {
  public:
    CBase() = default;
    explicit CBase(const CRef& ref) : ref_(ref) {}

    // Whether the handle refers to something that still stands in the scene.
    bool IsValid() const;
    // Makes the handle empty; the object it referred to is left alone.
    void ResetObject() { ref_ = CRef(); }
    CRef GetRef() const { return ref_; }

  protected:
    CRef ref_;
};

}  // namespace Zelk
