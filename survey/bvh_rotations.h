// Re-expresses rotations that are listed in any order as angles about x, y and z, of which x acts
// first. The angles do not jump from frame to frame.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// The angles of one joint, frame by frame.
class ReexpressedAngles {
  public:
    explicit ReexpressedAngles(const BvhJoint& joint);

    // Writes the angles of the next frame, whose values are `row`, in degrees about x, y and z.
    // They satisfy Rz * Ry * Rx = the product of the listed rotations from left to right, for
    // column vectors. Of all such angles they are the ones nearest to those of the frame before; in
    // the first frame, to the listed angles. At gimbal lock z keeps its value.
    void Next(const double* row, double angles[3]);

  private:
    using Matrix = std::array<double, 9>;  // m[3 * row + column]

    Matrix Product(const double* row) const;

    std::array<std::size_t, 3> axes_{};     // of the rotations, as listed
    std::array<std::size_t, 3> columns_{};  // their indexes in a row
    std::size_t count_ = 0;                 // number of rotations
    bool isFirst_ = true;
    std::array<double, 3> previous_{};  // the last frame's angles about x, y and z
};

// The angles of several joints in every frame.
class ReexpressedFrames {
  public:
    // `joints` are rising indexes into the section's joints.
    ReexpressedFrames(const BvhSection& section, const std::vector<std::size_t>& joints,
                      const BvhFrames& frames);

    // The frame's angles: three for each of `joints`, in degrees about x, y and z.
    const double* Frame(std::size_t frame) const { return angles_.data() + frame * width_; }

  private:
    std::size_t width_;
    std::vector<double> angles_;
};

}  // namespace survey
