// Guesses from the extents of a figure's poses which axis points up, how tall the figure is and in
// which unit.
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
    // Ignores a position that is not finite.
    void Include(const double position[3]);
    // The box's size along axis 0, 1 or 2; 0 if nothing was included.
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
    // Frames must be added in their order in time.
    void AddFrame(const Extent& frame);

    // The axis along which most frames are longest; without frames, the rest pose's longest axis.
    std::size_t UpAxis() const;
    // The size of the rest pose along the up axis; if the rest pose is flat, that of the first
    // frame. Nullopt if both are 0.
    std::optional<double> Height() const;

  private:
    Extent rest_;
    std::optional<Extent> first_;
    std::array<std::size_t, 3> longest_{};  // number of frames by their longest axis
};

// The unit in which a person would have this height: "metres", "centimetres", "millimetres",
// "inches", "archive units" (inches times 0.45), or "" if there is none.
std::string_view LikelyUnit(double height);

// Fills in height, unit and up axis. Reports if the height, taken as metres as exports do, would be
// far from a person's.
void ReportShape(const FigureShape& shape, Facts& facts, FindingList& findings);

}  // namespace survey
