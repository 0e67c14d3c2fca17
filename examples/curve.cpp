#include "examples/curve.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace examples {
namespace {

double Slope(const Curve::Knot& a, const Curve::Knot& b) {
    return (b.value - a.value) / (b.percent - a.percent);
}

// Returns a slope at `b` with which the pieces from `a` to `b` and from `b` to `c` are monotone.
// The slope is the weighted harmonic mean of the slopes of the straight lines from `a` to `b` and
// from `b` to `c`. It is 0 if one line rises and the other falls, or if one is level.
double SlopeAt(const Curve::Knot& a, const Curve::Knot& b, const Curve::Knot& c) {
    const double before = Slope(a, b);
    const double after = Slope(b, c);
    if (before * after <= 0) return 0;
    const double widthBefore = b.percent - a.percent;
    const double widthAfter = c.percent - b.percent;
    const double weightBefore = widthBefore + 2 * widthAfter;
    const double weightAfter = 2 * widthBefore + widthAfter;
    return (weightBefore + weightAfter) / (weightBefore / after + weightAfter / before);
}

}  // namespace

Curve::Curve(std::vector<Knot> knots) : knots_(std::move(knots)) {
    const std::size_t last = knots_.size() - 1;
    slopes_.push_back(Slope(knots_[0], knots_[1]));
    for (std::size_t i = 1; i < last; ++i)
        slopes_.push_back(SlopeAt(knots_[i - 1], knots_[i], knots_[i + 1]));
    slopes_.push_back(Slope(knots_[last - 1], knots_[last]));
}

double Curve::At(double cycle) const {
    const double percent = 100 * cycle;
    if (percent <= knots_.front().percent) return knots_.front().value;
    if (percent >= knots_.back().percent) return knots_.back().value;
    const auto right =
        std::upper_bound(knots_.begin(), knots_.end(), percent,
                         [](double wanted, const Knot& knot) { return wanted < knot.percent; });
    const auto i = static_cast<std::size_t>(right - knots_.begin()) - 1;
    const Knot& a = knots_[i];
    const Knot& b = knots_[i + 1];
    const double width = b.percent - a.percent;
    const double t = (percent - a.percent) / width;
    const double u = 1 - t;
    return u * u * (1 + 2 * t) * a.value + t * t * (1 + 2 * u) * b.value +
           t * u * width * (u * slopes_[i] - t * slopes_[i + 1]);
}

}  // namespace examples
