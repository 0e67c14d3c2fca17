// Guesses from the extents of a figure's poses which axis points up, how tall the figure is, and
// which unit of length its numbers have.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace math {

// The smallest box that contains all joints of one pose. Its sides are parallel to the axes.
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
    // Frames must be added in their order in time, because Height uses the first one.
    void AddFrame(const Extent& frame);

    // The axis (0, 1 or 2) that is the longest one in most frames. If no frame was added, it is the
    // longest axis of the rest pose.
    std::size_t UpAxis() const;
    // The size of the rest pose along the up axis, in the unit of the positions. If the rest pose
    // is flat along that axis, this is the size of the first frame instead. Nullopt if both sizes
    // are 0.
    std::optional<double> Height() const;

  private:
    Extent rest_;
    std::optional<Extent> first_;
    std::array<std::size_t, 3> longest_{};  // for each axis, in how many frames it is the longest
};

struct LengthUnit {
    std::string_view name;  // "metres", "centimetres", "millimetres", "inches" or "archive units"
    double metres;          // the length of one unit, in metres
};

// Returns the unit in which a person could have this height. Null if no unit fits. An archive unit
// is 1/0.45 inch.
const LengthUnit* LikelyUnit(double height);

}  // namespace math
