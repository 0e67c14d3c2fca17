// A walk on level ground at an ordinary pace: the pose of the skeleton at any time.
#pragma once

#include <array>

#include "examples/foot_plan.h"
#include "examples/rotation.h"
#include "examples/skeleton.h"

namespace examples {

constexpr int kFramesPerSecond = 60;
constexpr int kFramesPerCycle = 64;
constexpr int kCycles = 4;
// The first and the last frame are at the same point of a cycle.
constexpr int kFrameCount = kFramesPerCycle * kCycles + 1;

struct Pose {
    Vec3 hips;  // cm, in the world
    // How each joint is turned from its T-pose, relative to its parent. The hips' rotation is
    // relative to the world. The array index is a JointId.
    std::array<Rotation, kJointCount> local;
};

class GaitModel {
  public:
    explicit GaitModel(const Skeleton& skeleton);

    // `cycles` is the time in cycles since the left foot's first contact. Throws std::logic_error
    // if a foot is planned further from its hip than the leg is long.
    Pose At(double cycles) const;

  private:
    void PoseTrunk(double cycles, Pose& pose) const;
    void PoseLeg(Side side, double cycles, Pose& pose) const;
    void PoseArm(Side side, double cycles, Pose& pose) const;

    Skeleton skeleton_;
    FootPlan feet_;
};

}  // namespace examples
