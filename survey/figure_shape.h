// What the extents of a figure's poses make likely: which axis points up, how tall the figure is
// and in which unit.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "survey/finding_list.h"
#include "survey/survey.h"

namespace survey {

// The box around the joints of one pose.
class Extent {
  public:
    void Include(const double position[3]);
    // Along axis 0, 1 or 2; 0 where nothing finite was included.
    double Along(std::size_t axis) const;
    std::size_t LongestAxis() const;
    double Diagonal() const;

  private:
    std::array<double, 3> low_{};
    std::array<double, 3> high_{};
    bool empty_ = true;
};

class FigureShape {
  public:
    void SetRest(const Extent& rest) { rest_ = rest; }
    // In the order of time.
    void AddFrame(const Extent& frame);

    // The axis along which most frames, or without any the rest pose, are longest.
    std::size_t UpAxis() const;
    // Of the rest pose's box along that axis, or of the first frame's where the rest pose is flat.
    // None where neither has any.
    std::optional<double> Height() const;

  private:
    Extent rest_;
    std::optional<Extent> first_;
    std::array<std::size_t, 3> longest_{};  // frames by their longest axis
};

// The unit in which a person would be that tall: "metres", "centimetres", "millimetres", "inches",
// "archive units" (inches times 0.45) or "".
std::string_view LikelyUnit(double height);

// Fills in height, unit and up axis, and tells where an export of that height would be far from a
// person's size in metres.
void ReportShape(const FigureShape& shape, Facts& facts, FindingList& findings);

}  // namespace survey
