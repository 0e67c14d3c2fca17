// Listed rotations as angles about x, y and z that turn the same way, x first, and follow each
// other without jumps.
#pragma once

#include <array>
#include <cstddef>

#include "survey/bvh_skeleton.h"

namespace survey {

// Of one joint, frame by frame.
class TurnedAngles {
  public:
    explicit TurnedAngles(const BvhJoint& joint);

    // The next frame's, from its row, in degrees about x, y and z: R = Rz * Ry * Rx for column
    // vectors is the product of the listed rotations from left to right. Of the angles that give it
    // they are those nearest to the frame before, in the first frame to the listed ones. At gimbal
    // lock z stays.
    void Next(const double* row, double angles[3]);

  private:
    using Matrix = std::array<double, 9>;  // m[3 * row + column]

    Matrix Product(const double* row) const;

    std::array<std::size_t, 3> axes_{};  // as listed
    std::array<std::size_t, 3> columns_{};
    std::size_t count_ = 0;
    bool isFirst_ = true;
    std::array<double, 3> before_{};  // about x, y and z
};

}  // namespace survey
