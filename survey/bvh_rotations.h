// Converts rotations that are listed in any order to angles about x, y and z. The rotation about x
// acts first, the rotation about z acts last. The angles do not jump from frame to frame.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/numbers.h"

namespace survey {

// Computes the angles of one joint, frame by frame.
class ReexpressedAngles {
  public:
    explicit ReexpressedAngles(const BvhJoint& joint);

    // Sets `angles` to the angles of the next frame about x, y and z, in degrees. `row` has the
    // values of that frame. For column vectors, Rz * Ry * Rx is the product of the listed rotations
    // from left to right. Of all such angles, chooses those nearest to the angles of the frame
    // before; in the first frame, those nearest to the listed angles. At gimbal lock, the angle
    // about z stays as it was.
    void Next(const double* row, double angles[3]);
    // Does the same for the next `count` frames, at most kArcs (rotation_arcs.h), and faster. The
    // values of the frames are `stride` numbers apart, their angles `width` numbers.
    void NextFrames(const double* row, std::size_t stride, std::size_t count, double* angles,
                    std::size_t width);

  private:
    using Matrix = std::array<double, 9>;  // m[3 * row + column]

    Matrix Product(const double* row) const;
    void Begin(const double* row);
    // Sets `previous_` to the angles, which are about x, y and z in radians, or to others of the
    // same rotation.
    void Follow(double x, double y, double z, bool isLocked);

    std::array<std::size_t, 3> axes_{};     // the axes of the rotations, in the order of the file
    std::array<std::size_t, 3> columns_{};  // the indexes of their values in a row
    std::size_t count_ = 0;                 // number of rotations
    bool isFirst_ = true;
    // Angles of the last frame about x, y and z, in degrees.
    std::array<double, 3> previous_{};
};

// Holds the angles of several joints in every frame.
class ReexpressedFrames {
  public:
    // `joints` are indexes into the section's joints, in rising order. Computes on `threads`
    // threads, the calling one included.
    ReexpressedFrames(const BvhSection& section, const std::vector<std::size_t>& joints,
                      const BvhFrames& frames, std::size_t threads);

    // The angles of the frame at this index, counted from 0. There are three for each of `joints`:
    // about x, y and z, in degrees.
    const double* Frame(std::size_t frame) const { return angles_.data() + frame * width_; }

  private:
    std::size_t width_;
    Numbers angles_;
};

}  // namespace survey
