#include "math/figure_shape.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace math {
namespace {

// A rest pose counts as flat if its height is at most this fraction of the first frame's.
constexpr double kFlat = 1e-3;

struct UnitOfHeights {
    LengthUnit unit;
    double least;  // the smallest height of a person, in this unit
    double most;   // the greatest height of a person, in this unit
};
constexpr UnitOfHeights kUnits[] = {
    {{"metres", 1.0}, 1.0, 2.3},
    {{"centimetres", 0.01}, 100.0, 230.0},
    {{"millimetres", 0.001}, 1000.0, 2300.0},
    {{"inches", 0.0254}, 39.0, 90.0},
    {{"archive units", 0.056444}, 18.0, 41.0},
};

}  // namespace

void Extent::Include(const double position[3]) {
    if (!std::isfinite(position[0] + position[1] + position[2])) return;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        low_[axis] = empty_ ? position[axis] : std::min(low_[axis], position[axis]);
        high_[axis] = empty_ ? position[axis] : std::max(high_[axis], position[axis]);
    }
    empty_ = false;
}

double Extent::Along(std::size_t axis) const {
    return high_[axis] - low_[axis];
}

std::size_t Extent::LongestAxis() const {
    std::size_t longest = 1;  // of equal sizes, y is preferred, then z
    for (const std::size_t axis : {std::size_t{2}, std::size_t{0}})
        if (Along(axis) > Along(longest)) longest = axis;
    return longest;
}

double Extent::Diagonal() const {
    return std::hypot(Along(0), Along(1), Along(2));
}

void FigureShape::AddFrame(const Extent& frame) {
    if (!first_) first_ = frame;
    ++longest_[frame.LongestAxis()];
}

std::size_t FigureShape::UpAxis() const {
    if (!first_) return rest_.LongestAxis();
    std::size_t up = 1;
    for (const std::size_t axis : {std::size_t{2}, std::size_t{0}})
        if (longest_[axis] > longest_[up]) up = axis;
    return up;
}

std::optional<double> FigureShape::Height() const {
    const std::size_t up = UpAxis();
    const double inMotion = first_ ? first_->Along(up) : 0.0;
    const double atRest = rest_.Along(up);
    const double height = atRest > kFlat * inMotion ? atRest : inMotion;
    return height > 0.0 ? std::optional(height) : std::nullopt;
}

const LengthUnit* LikelyUnit(double height) {
    const auto* const found = std::find_if(
        std::begin(kUnits), std::end(kUnits),
        [&](const UnitOfHeights& unit) { return height >= unit.least && height <= unit.most; });
    return found == std::end(kUnits) ? nullptr : &found->unit;
}

}  // namespace math
