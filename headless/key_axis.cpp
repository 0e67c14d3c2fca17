#include "headless/key_axis.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

// Whether each time is larger than the one before it. Returns false if one of the times is NaN.
bool Rises(std::span<const double> times) {
    for (std::size_t index = 1; index < times.size(); ++index)
        if (!(times[index - 1] < times[index])) return false;
    return times.empty() || !std::isnan(times.front());
}

}  // namespace

KeyAxis::KeyAxis(std::span<const double> times) {
    if (Rises(times)) {
        sorted_ = times;
        return;
    }
    std::vector<std::size_t> keys;
    for (std::size_t key = 0; key < times.size(); ++key)
        if (!std::isnan(times[key])) keys.push_back(key);
    std::stable_sort(keys.begin(), keys.end(),
                     [times](std::size_t a, std::size_t b) { return times[a] < times[b]; });
    for (const std::size_t key : keys) {
        if (!order_.empty() && ownTimes_.back() == times[key]) {
            order_.back() = key;
            continue;
        }
        order_.push_back(key);
        ownTimes_.push_back(times[key]);
    }
    sorted_ = ownTimes_;
}

KeyAxis::Interval KeyAxis::At(double frame) const {
    // If the frame is NaN, it is treated like a frame before all keys.
    const auto after = std::isnan(frame) ? sorted_.begin()
                                         : std::upper_bound(sorted_.begin(), sorted_.end(), frame);
    const auto next = static_cast<std::size_t>(after - sorted_.begin());
    if (next == 0) return {KeyAt(0), KeyAt(0), 0.0};
    const std::size_t last = KeyAt(next - 1);
    if (next == sorted_.size()) return {last, last, 0.0};
    const double start = sorted_[next - 1];
    const double share = (frame - start) / (sorted_[next] - start);
    return {last, KeyAt(next), std::isfinite(share) ? share : 0.0};
}

}  // namespace headless
