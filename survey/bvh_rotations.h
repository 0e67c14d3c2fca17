// Converts rotations that are listed in any order to angles about x, y and z. The rotation about x
// acts first, the rotation about z acts last. The angles do not jump from frame to frame.
#pragma once

#include <array>
#include <cstddef>

#include "math/pose_lanes.h"
#include "survey/bvh_skeleton.h"

namespace survey {

// The most frames that are computed at a time.
inline constexpr std::size_t kFramesInBlock = math::kPoseLanes;

// The values of frames that follow each other.
struct FrameRows {
    const double* first;  // the values of the first frame
    std::size_t stride;   // the values of the next frame are this many numbers further
    std::size_t count;    // the number of frames, at most kFramesInBlock
};

// The angles of one joint in such frames before it is known which angles of the same rotations are
// the nearest to those of the frames before.
struct ListedBlock {
    math::AngleLanes angles;         // about x, y and z, in degrees
    double cosines[kFramesInBlock];  // of the angle about y; 0 if Next must compute the frame
};

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

    // Compute and Follow together do the same for the frames of a block, and faster. The angles
    // differ from those of Next by rounding errors. Compute may be called on several threads, for
    // any block. Follow must be called for one block after the other; the angles of its frames are
    // `width` numbers apart.
    void Compute(const FrameRows& rows, ListedBlock& block) const;
    void Follow(const FrameRows& rows, const ListedBlock& block, double* angles, std::size_t width);

  private:
    using Matrix = std::array<double, 9>;  // m[3 * row + column]

    Matrix Product(const double* row) const;
    void Begin(const double* row);
    // Sets `previous_` to the angles, which are about x, y and z in degrees, or to others of the
    // same rotation.
    void FollowAngles(const std::array<double, 3>& angles, bool isLocked);

    std::array<std::size_t, 3> axes_{};     // the axes of the rotations, in the order of the file
    std::array<std::size_t, 3> columns_{};  // the indexes of their values in a row
    std::size_t count_ = 0;                 // number of rotations
    bool isFirst_ = true;
    // Angles of the last frame about x, y and z, in degrees.
    std::array<double, 3> previous_{};
};

}  // namespace survey
