// A smooth curve over the gait cycle that goes through published values.
#pragma once

#include <vector>

namespace examples {

// The curve goes through its knots. Between two knots it stays between their values (monotone cubic
// pieces, Fritsch and Carlson 1980), so that a flat foot stays flat between two equal knots.
class Curve {
  public:
    struct Knot {
        double percent;  // of the cycle
        double value;
    };

    // At least two knots, `percent` rising.
    explicit Curve(std::vector<Knot> knots);

    // `cycle` is in cycles: 1 is a whole one. Before the first knot and after the last one the
    // curve has that knot's value.
    double At(double cycle) const;

  private:
    std::vector<Knot> knots_;
    std::vector<double> slopes_;  // value per percent, at each knot
};

}  // namespace examples
