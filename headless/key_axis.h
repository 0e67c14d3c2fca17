#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace headless {

// The times of a curve's keys in rising order, whatever order they were set in; of equal times the
// last one counts, what is no number does not. Curves with the same times share one.
class KeyAxis {
  public:
    // Refers to `times` where they rise already.
    explicit KeyAxis(const std::vector<double>& times);
    KeyAxis(KeyAxis&&) = default;
    KeyAxis(const KeyAxis&) = delete;

    // Between which keys a frame lies; outside all of them both are the nearest.
    struct Place {
        std::size_t before = 0;
        std::size_t after = 0;
        double share = 0.0;  // 0 at `before`, 1 at `after`
    };
    // Nothing may be asked of an axis without keys.
    bool IsEmpty() const { return sorted_.empty(); }
    Place At(double frame) const;

  private:
    std::size_t KeyOf(std::size_t place) const { return order_.empty() ? place : order_[place]; }

    std::span<const double> sorted_;
    std::vector<double> ownTimes_;    // what `sorted_` shows, where it had to be sorted
    std::vector<std::size_t> order_;  // the key of each of `ownTimes_`
};

inline double ValueAt(const std::vector<double>& values, const KeyAxis::Place& place) {
    const double before = values[place.before];
    // Exact at a key, and no infinity times nothing.
    if (place.share == 0.0) return before;
    return before + (values[place.after] - before) * place.share;
}

}  // namespace headless
