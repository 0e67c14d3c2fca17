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
// The frames of all cycles, and one more frame at the end that repeats the first pose.
constexpr int kFrameCount = kFramesPerCycle * kCycles + 1;

struct Pose {
    Vec3 hips;  // cm, in the world
    // The rotation of each joint from its T-pose, relative to its parent. The rotation of the hips
    // is relative to the world. The array index is a JointId.
    std::array<Rotation, kJointCount> local;
};

class GaitModel {
  public:
    explicit GaitModel(const Skeleton& skeleton);

    // `cycles` is the time in cycles since the left foot landed for the first time. Throws
    // std::logic_error if the leg is too short to reach the planned position of the foot.
    Pose At(double cycles) const;

  private:
    void PoseTrunk(double cycles, Pose& pose) const;
    void PoseLeg(Side side, double cycles, Pose& pose) const;
    void PoseArm(Side side, double cycles, Pose& pose) const;

    Skeleton skeleton_;
    FootPlan feet_;
};

}  // namespace examples
