// Where the bones of an Acclaim skeleton are, and whether its motion keeps to its limits.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_values.h"
#include "survey/figure_shape.h"
#include "survey/finding_list.h"

namespace survey {

// Forward kinematics of a skeleton whose axes are all in the order x y z.
class AcclaimFigure {
  public:
    // Lengths and the root's place are multiplied by `factor`.
    AcclaimFigure(const AsfSkeleton& skeleton, double factor);

    Extent AtRest();
    // `degrees` is the unit of the motion's angles.
    Extent At(const AmcValues& values, bool degrees);

  private:
    using Matrix = std::array<std::array<double, 4>, 4>;
    struct State {
        std::array<double, 3> place{};
        Matrix turn{};
        double length = 0.0;
    };

    Extent Walk();
    void PutAtRest();
    void Turn(std::uint32_t bone, const AmcValues& values, double radiansPerUnit);

    const AsfSkeleton& skeleton_;
    double factor_;
    std::vector<Matrix> axes_;
    std::vector<Matrix> inverses_;
    std::vector<State> states_;
    std::vector<std::array<double, 3>> ends_;
};

// At most some hundreds of poses, spread over all frames.
class PoseSample {
  public:
    // Whether the next frame is one of them.
    bool Wants() { return next_++ % stride_ == 0; }
    void Add(const Extent& extent);
    void GiveTo(FigureShape& shape) const;

  private:
    std::size_t next_ = 0;
    std::size_t stride_ = 1;
    std::vector<Extent> extents_;
};

class LimitWatch {
  public:
    explicit LimitWatch(const AsfSkeleton& skeleton);
    void Add(const AmcValues& values, bool degrees);
    void Report(FindingList& findings) const;

  private:
    struct Excess {
        std::size_t frames = 0;
        double worst = 0.0;  // in the skeleton's unit
    };
    const AsfSkeleton& skeleton_;
    std::vector<Excess> excesses_;  // by bone
};

}  // namespace survey
