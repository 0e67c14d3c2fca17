#include "survey/figure_shape.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/codes.h"
#include "text/number_text.h"

namespace survey {
namespace {

// Heights outside of these bounds are reported. They are in metres, because exports take the file's
// numbers as metres.
constexpr double kTallest = 5.0;
constexpr double kSmallest = 0.3;
// If the unit is unknown, the finding suggests a scale that makes the figure this tall, in metres.
constexpr double kUsualHeight = 1.7;
// A rest pose counts as flat if its height is at most this fraction of the first frame's.
constexpr double kFlat = 1e-3;

struct Unit {
    std::string_view name;
    double least;   // the smallest height of a person, in this unit
    double most;    // the greatest height of a person, in this unit
    double metres;  // the length of one unit, in metres
};
constexpr Unit kUnits[] = {
    {"metres", 1.0, 2.3, 1.0},
    {"centimetres", 100.0, 230.0, 0.01},
    {"millimetres", 1000.0, 2300.0, 0.001},
    {"inches", 39.0, 90.0, 0.0254},
    {"archive units", 18.0, 41.0, 0.056444},
};

const Unit* FindUnit(double height) {
    const auto* const found =
        std::find_if(std::begin(kUnits), std::end(kUnits),
                     [&](const Unit& unit) { return height >= unit.least && height <= unit.most; });
    return found == std::end(kUnits) ? nullptr : found;
}

// Writes a number above 0 with four significant digits, for messages.
std::string Rounded(double number) {
    const double power = std::pow(10.0, 3.0 - std::floor(std::log10(number)));
    // A power of ten below 1 is not exact, so its inverse, which is exact, is used.
    const double rounded = power >= 1.0 ? std::round(number * power) / power
                                        : std::round(number * power) * std::round(1.0 / power);
    return text::NumberText(rounded);
}

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

std::string_view LikelyUnit(double height) {
    const Unit* unit = FindUnit(height);
    return unit ? unit->name : std::string_view();
}

void ReportShape(const FigureShape& shape, Facts& facts, FindingList& findings) {
    facts.height = shape.Height();
    if (!facts.height) return;
    facts.unit = LikelyUnit(*facts.height);
    facts.up = std::string(1, "xyz"[shape.UpAxis()]);
    if (*facts.height >= kSmallest && *facts.height <= kTallest) return;
    const Unit* unit = FindUnit(*facts.height);
    const double scale = unit ? unit->metres : kUsualHeight / *facts.height;
    const std::string scaleText = unit ? text::NumberText(scale) : Rounded(scale);
    const std::string likely = unit ? ", likely of " + std::string(unit->name) : std::string();
    findings.Add({codes::kFigureSize, Severity::Note, nullptr,
                  "the figure is " + Rounded(*facts.height) + " tall" + likely +
                      "; exports count metres: --scale " + scaleText + " makes it " +
                      Rounded(*facts.height * scale) + " metres tall"});
}

}  // namespace survey
