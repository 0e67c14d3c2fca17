// A smooth curve over the gait cycle that goes through published values.
#pragma once

#include <vector>

namespace examples {

// The curve goes through its knots. Between two knots, the curve never leaves the range of their
// two values. For example, a foot stays flat between two knots with the value 0. Each piece of the
// curve is a monotone cubic polynomial (Fritsch and Carlson 1980).
class Curve {
  public:
    struct Knot {
        double percent;  // time since the cycle began, in percent of the cycle
        double value;
    };

    // Needs at least two knots. `percent` must rise from each knot to the next.
    explicit Curve(std::vector<Knot> knots);

    // Returns the value at a time. `cycle` is the time in whole cycles, so 0.5 is 50 percent.
    // Before the first knot the curve has the value of the first knot. After the last knot it has
    // the value of the last knot.
    double At(double cycle) const;

  private:
    std::vector<Knot> knots_;
    std::vector<double> slopes_;  // the slope at each knot, as a change of value per percent
};

}  // namespace examples
