#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace headless {

// Numbers that never change. The numbers of several arrays may be in one block of memory, which is
// freed when none of these arrays exists any more.
class NumberArray {
  public:
    using value_type = double;
    using const_iterator = const double*;
    using iterator = const_iterator;

    NumberArray(std::shared_ptr<const double[]> numbers, std::size_t count)
        : numbers_(std::move(numbers)), count_(count) {}
    explicit NumberArray(std::vector<double> numbers) : count_(numbers.size()) {
        const auto owner = std::make_shared<const std::vector<double>>(std::move(numbers));
        numbers_ = std::shared_ptr<const double[]>(owner, owner->data());
    }

    std::size_t size() const { return count_; }
    bool empty() const { return count_ == 0; }
    const double* data() const { return numbers_.get(); }
    const_iterator begin() const { return data(); }
    const_iterator end() const { return data() + count_; }
    const double& operator[](std::size_t index) const { return data()[index]; }
    // Must not be called if the array is empty.
    const double& front() const { return data()[0]; }
    const double& back() const { return data()[count_ - 1]; }

  private:
    std::shared_ptr<const double[]> numbers_;
    std::size_t count_;
};

}  // namespace headless
