// Forward kinematics of a section by the rules of the format. A joint's rotation is the product of
// its listed rotations from left to right, for column vectors. A position channel replaces the
// component of OFFSET that has the same axis.
#pragma once

#include <array>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/figure_shape.h"

namespace survey {

class BvhWalk {
  public:
    // If `addsOffsets`, a position channel is added to the component of OFFSET instead of replacing
    // it. The section must outlive this object.
    BvhWalk(const BvhSection& section, bool addsOffsets);

    // The box around all joints and end sites of the rest pose.
    Extent RestExtent();
    // The same box for the frame whose values are `row`.
    Extent FrameExtent(const double* row);

  private:
    using Rotation = std::array<double, 9>;  // m[3 * row + column], for column vectors

    void PoseJoint(std::size_t joint, const double* row);

    const BvhSection& section_;
    bool addsOffsets_;
    std::vector<Rotation> rotations_;
    std::vector<std::array<double, 3>> positions_;
};

// The length of the diagonal of the box around the rest pose. If that is 0, the diagonal of the box
// around the first frame is used, which may be 0 too.
double FigureSize(const BvhSection& section, const BvhFrames& frames);

}  // namespace survey
