// Poses an Acclaim skeleton to find its extent. Also checks the motion against the bones' limits.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_values.h"
#include "survey/figure_shape.h"
#include "survey/finding_list.h"

namespace survey {

// Forward kinematics of a skeleton, which must outlive this object. All axis orders must be XYZ.
class AcclaimFigure {
  public:
    // All lengths and the root's position are multiplied by `factor`.
    AcclaimFigure(const AsfSkeleton& skeleton, double factor);

    Extent RestExtent();
    // The extent in the frame whose values are `values`. `degrees` says whether their angles are in
    // degrees; otherwise they are in radians.
    Extent FrameExtent(const AmcValues& values, bool degrees);

  private:
    using Matrix = std::array<std::array<double, 4>, 4>;
    struct State {
        std::array<double, 3> position{};
        Matrix rotation{};
        double length = 0.0;
    };

    Extent Walk();
    void SetToRest();
    void ApplyValues(std::uint32_t bone, const AmcValues& values, double radiansPerUnit);

    const AsfSkeleton& skeleton_;
    double factor_;
    // Each of the following vectors has one element for each bone.
    std::vector<Matrix> axes_;      // the rotations of the bones' axes
    std::vector<Matrix> inverses_;  // the inverse of each matrix in `axes_`
    std::vector<State> states_;
    std::vector<std::array<double, 3>> ends_;  // global positions of the bones' ends
};

// Collects fewer than 500 poses that are spread evenly over all frames.
class PoseSample {
  public:
    // Must be called once for each frame. If it returns true, the pose of that frame is to be
    // passed to Add.
    bool IncludesNext() { return next_++ % stride_ == 0; }
    void Add(const Extent& extent);
    // Adds the collected poses to `shape` in the order of their frames.
    void AddTo(FigureShape& shape) const;

  private:
    std::size_t next_ = 0;
    std::size_t stride_ = 1;
    std::vector<Extent> extents_;
};

// Counts the frames in which values of a bone exceed the bone's limits.
class LimitWatch {
  public:
    explicit LimitWatch(const AsfSkeleton& skeleton);
    // Adds a frame. `degrees` says whether its angles are in degrees; otherwise they are in
    // radians.
    void Add(const AmcValues& values, bool degrees);
    void Report(FindingList& findings) const;

  private:
    struct Excess {
        std::size_t frames = 0;
        double worst = 0.0;  // the largest excess, in the unit of the limit
    };
    const AsfSkeleton& skeleton_;
    std::vector<Excess> excesses_;  // by bone
};

}  // namespace survey
