// Poses an Acclaim skeleton to find its extent, and checks the motion against the bones' limits.
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
    // Lengths and the root's position are multiplied by `factor`.
    AcclaimFigure(const AsfSkeleton& skeleton, double factor);

    Extent RestExtent();
    // The extent in the frame that `values` holds. `degrees` says whether its angles are in
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
    // All by bone.
    std::vector<Matrix> axes_;
    std::vector<Matrix> inverses_;  // of `axes_`
    std::vector<State> states_;
    std::vector<std::array<double, 3>> ends_;  // where the bones end
};

// Samples up to 500 poses that are spread over all frames.
class PoseSample {
  public:
    // Whether the next frame's pose is to be added. To be called once for each frame.
    bool IncludesNext() { return next_++ % stride_ == 0; }
    void Add(const Extent& extent);
    // Adds the poses to `shape` in the order of frames.
    void AddTo(FigureShape& shape) const;

  private:
    std::size_t next_ = 0;
    std::size_t stride_ = 1;
    std::vector<Extent> extents_;
};

// Counts values of a motion that exceed the limits of their bones.
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
        double worst = 0.0;  // the largest excess, in the skeleton's unit
    };
    const AsfSkeleton& skeleton_;
    std::vector<Excess> excesses_;  // by bone
};

}  // namespace survey
