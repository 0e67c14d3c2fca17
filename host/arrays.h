#pragma once

#include <cstdint>
#include <vector>

#include "host/export.h"
#include "host/ref.h"
#include "host/string.h"
#include "host/value.h"

namespace Zelk {

// The times of keys, in frames. New elements are 0.
class CTimeArray {
  public:
    explicit CTimeArray(std::uint32_t count = 0) : times_(count) {}
    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(times_.size()); }
    double& operator[](std::uint32_t index) { return times_[index]; }
    const double& operator[](std::uint32_t index) const { return times_[index]; }

  private:
    std::vector<double> times_;
};

class CValueArray {
  public:
    explicit CValueArray(std::uint32_t count = 0) : values_(count) {}
    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(values_.size()); }
    // Changes the number of values to `count`. Values with an index below `count` are kept; new
    // values are empty.
    void Resize(std::uint32_t count) { values_.resize(count); }
    CValue& operator[](std::uint32_t index) { return values_[index]; }
    const CValue& operator[](std::uint32_t index) const { return values_[index]; }

  private:
    std::vector<CValue> values_;
};

class CRefArray {
  public:
    std::uint32_t GetCount() const { return static_cast<std::uint32_t>(refs_.size()); }
    void Add(const CRef& ref) { refs_.push_back(ref); }
    const CRef& operator[](std::uint32_t index) const { return refs_[index]; }
    // Returns the first reference whose object or parameter is called `name`. If there is none, it
    // returns the empty reference.
    ZELK_API CRef GetItem(const CString& name) const;

  private:
    std::vector<CRef> refs_;
};

}  // namespace Zelk
