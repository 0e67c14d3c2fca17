// Forward kinematics of a section by the format's own rules: the first-listed rotation is the
// outermost, and a position channel replaces its component of the OFFSET.
#pragma once

#include <array>
#include <vector>

#include "survey/bvh_rows.h"
#include "survey/bvh_skeleton.h"
#include "survey/figure_shape.h"

namespace survey {

class BvhWalk {
  public:
    // With `addsOffsets` a position channel is added to its component. The section stays.
    BvhWalk(const BvhSection& section, bool addsOffsets);

    // The box around all joints and end sites, without a motion and in a frame.
    Extent Rest();
    Extent Frame(const double* row);

  private:
    using Turn = std::array<double, 9>;  // m[3 * row + column], for column vectors

    void PutJoint(std::size_t joint, const double* row);

    const BvhSection& section_;
    bool addsOffsets_;
    std::vector<Turn> turns_;
    std::vector<std::array<double, 3>> positions_;
};

// The diagonal of the rest box or, where that is a point, of the first frame's; 0 where that is one
// too.
double FigureSize(const BvhSection& section, const BvhFrames& frames);

}  // namespace survey
