#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace headless {

// The times of a curve's keys in rising order, whatever order they were set in. Of equal times only
// the last one is kept; NaN is left out. Curves with the same times share an axis.
class KeyAxis {
  public:
    // Keeps a reference to `times` if they are in rising order already.
    explicit KeyAxis(const std::vector<double>& times);
    KeyAxis(KeyAxis&&) = default;
    KeyAxis(const KeyAxis&) = delete;

    // The indexes of the keys before and after a frame. Outside all keys both are the nearest key.
    struct Interval {
        std::size_t before = 0;
        std::size_t after = 0;
        double share = 0.0;  // 0 at `before`, 1 at `after`
    };
    bool IsEmpty() const { return sorted_.empty(); }
    // Must not be called if the axis is empty.
    Interval At(double frame) const;

  private:
    std::size_t KeyAt(std::size_t index) const { return order_.empty() ? index : order_[index]; }

    std::span<const double> sorted_;
    std::vector<double> ownTimes_;    // what `sorted_` refers to if the times had to be sorted
    std::vector<std::size_t> order_;  // for each of `ownTimes_` the index of its key
};

inline double ValueAt(const std::vector<double>& values, const KeyAxis::Interval& interval) {
    const double before = values[interval.before];
    // The result is exact at a key, and an infinite value is not multiplied by 0.
    if (interval.share == 0.0) return before;
    return before + (values[interval.after] - before) * interval.share;
}

}  // namespace headless
