#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace headless {

// The times of a curve's keys, sorted in rising order. If several keys have the same time, only the
// one with the largest index is kept. Keys whose time is NaN are left out. Curves with the same
// array of times can share an axis.
class KeyAxis {
  public:
    // `times` must exist as long as the axis. If the times are in rising order already, they are
    // not copied.
    explicit KeyAxis(std::span<const double> times);
    KeyAxis(KeyAxis&&) = default;
    KeyAxis(const KeyAxis&) = delete;

    // The indexes of the keys before and after a frame, in the array that the constructor got. If
    // the frame is before the first key or after the last one, both are the index of the nearest
    // key.
    struct Interval {
        std::size_t before = 0;
        std::size_t after = 0;
        double share = 0.0;  // where the frame is: 0 at `before`, 1 at `after`
    };
    bool IsEmpty() const { return sorted_.empty(); }
    // Must not be called if the axis is empty.
    Interval At(double frame) const;

  private:
    std::size_t KeyAt(std::size_t index) const { return order_.empty() ? index : order_[index]; }

    std::span<const double> sorted_;
    // Used only if the times had to be sorted; `sorted_` then refers to it.
    std::vector<double> ownTimes_;
    std::vector<std::size_t> order_;  // the index of the key that ownTimes_[i] belongs to
};

inline double ValueAt(std::span<const double> values, const KeyAxis::Interval& interval) {
    const double before = values[interval.before];
    // At a key the result is the exact value of the key. The formula below would multiply by 0,
    // which gives NaN if one of the two values is infinite.
    if (interval.share == 0.0) return before;
    return before + (values[interval.after] - before) * interval.share;
}

}  // namespace headless
