// A curve over the gait cycle through published values.
#pragma once

#include <vector>

namespace examples {

// Goes through its knots and never beyond the values of the two it is between (monotone cubic
// pieces, Fritsch and Carlson 1980), so that a foot laid flat stays flat between two equal knots.
class Curve {
  public:
    struct Knot {
        double percent;  // of the cycle
        double value;
    };

    // At least two knots, `percent` rising.
    explicit Curve(std::vector<Knot> knots);

    // `cycle` is the part of a cycle, 1 being a whole one. Beyond its knots the curve keeps the
    // last value.
    double At(double cycle) const;

  private:
    std::vector<Knot> knots_;
    std::vector<double> slopes_;  // value per percent, at each knot
};

}  // namespace examples
