// Listed rotations as angles about x, y and z that turn the same way, x first, and follow each
// other without jumps.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "survey/bvh_rows.h"
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

// The angles of all joints that turn, of every frame.
class TurnedFrames {
  public:
    // `joints` are indexes into the section, in its order.
    TurnedFrames(const BvhSection& section, const std::vector<std::size_t>& joints,
                 const BvhFrames& frames);

    // Three for each joint that turns: about x, y and z.
    const double* Frame(std::size_t frame) const { return angles_.data() + frame * width_; }

  private:
    std::size_t width_;
    std::vector<double> angles_;
};

}  // namespace survey
