// Forward kinematics of a section by the rules of the format: a joint's rotation is the product of
// its listed rotations from left to right, for column vectors, and a position channel replaces its
// component of the OFFSET.
#pragma once

#include <array>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/figure_shape.h"

namespace survey {

class BvhWalk {
  public:
    // With `addsOffsets` a position channel is added to its component instead. The section must
    // outlive this object.
    BvhWalk(const BvhSection& section, bool addsOffsets);

    // The box around all joints and end sites: at rest, and in the frame with the values `row`.
    Extent RestExtent();
    Extent FrameExtent(const double* row);

  private:
    using Rotation = std::array<double, 9>;  // m[3 * row + column], for column vectors

    void PoseJoint(std::size_t joint, const double* row);

    const BvhSection& section_;
    bool addsOffsets_;
    std::vector<Rotation> rotations_;
    std::vector<std::array<double, 3>> positions_;
};

// The diagonal of the box around the rest pose; if that is 0, of the box around the first frame.
// 0 if both are points.
double FigureSize(const BvhSection& section, const BvhFrames& frames);

}  // namespace survey
