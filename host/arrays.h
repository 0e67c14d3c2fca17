#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "host/export.h"
#include "host/ref.h"
#include "host/string.h"
#include "host/value.h"

namespace Zelk {

// The times of keys, in frames. New elements are 0.
class CTimeArray {
  public:
    explicit CTimeArray(std::uint32_t count = 0) : times_(count), count_(count) {}
    // An array of `count` times that are not copied. The caller must not change them any more. A
    // host may keep `times` for as long as it needs them.
    CTimeArray(std::shared_ptr<const double[]> times, std::uint32_t count)
        : shared_(std::move(times)), count_(count) {}
    std::uint32_t GetCount() const { return count_; }
    // If the times are shared, the first call copies them.
    double& operator[](std::uint32_t index) {
        if (shared_) CopyShared();
        return times_[index];
    }
    const double& operator[](std::uint32_t index) const {
        return shared_ ? shared_.get()[index] : times_[index];
    }
    // The memory of the times. Null if the times are not shared.
    const std::shared_ptr<const double[]>& Shared() const { return shared_; }

  private:
    void CopyShared() {
        times_.assign(shared_.get(), shared_.get() + count_);
        shared_.reset();
    }

    std::vector<double> times_;
    std::shared_ptr<const double[]> shared_;  // if it is not null, `times_` is not used
    std::uint32_t count_;
};

class CValueArray {
  public:
    explicit CValueArray(std::uint32_t count = 0) : values_(count), count_(count) {}
    // An array of `count` numbers that are not copied. The caller must not change them any more. A
    // host may keep `numbers` for as long as it needs them.
    CValueArray(std::shared_ptr<const double[]> numbers, std::uint32_t count)
        : shared_(std::move(numbers)), count_(count) {}
    std::uint32_t GetCount() const { return count_; }
    // Changes the number of values to `count`. Values with an index below `count` are kept; new
    // values are empty.
    void Resize(std::uint32_t count) {
        if (shared_) CopyShared();
        values_.resize(count);
        count_ = count;
    }
    // If the numbers are shared, the first call copies them.
    CValue& operator[](std::uint32_t index) {
        if (shared_) CopyShared();
        return values_[index];
    }
    CValue operator[](std::uint32_t index) const {
        return shared_ ? CValue(shared_.get()[index]) : values_[index];
    }
    // The memory of the numbers. Null if the values are not shared.
    const std::shared_ptr<const double[]>& Shared() const { return shared_; }

  private:
    void CopyShared() {
        values_.assign(shared_.get(), shared_.get() + count_);
        shared_.reset();
    }

    std::vector<CValue> values_;
    std::shared_ptr<const double[]> shared_;  // if it is not null, `values_` is not used
    std::uint32_t count_;
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
