#pragma once

#include <cstdint>

// After which values of a motion the parser polls its monitor: after every `values / polls` values,
// or after each value if there are fewer than a hundred.
class ValuePolls {
  public:
    ValuePolls(std::uint32_t values, std::uint32_t polls)
        : step_(values > 99 ? values / polls : 1) {}

    // The number of values from one poll to the next.
    std::uint32_t Step() const { return step_; }
    // The number of values from the first `values` values to the next poll.
    std::uint32_t After(std::uint64_t values) const {
        return step_ - static_cast<std::uint32_t>(values % step_);
    }
    // The number of polls during the first `values` values.
    std::uint64_t Within(std::uint64_t values) const { return values / step_; }

  private:
    std::uint32_t step_;
};
