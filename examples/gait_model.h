// A walk on the level at an ordinary pace, as a skeleton's pose for any time.
#pragma once

#include <array>

#include "examples/foot_plan.h"
#include "examples/rotation.h"
#include "examples/skeleton.h"

namespace examples {

constexpr int kFramesPerSecond = 60;
constexpr int kFramesPerCycle = 64;
constexpr int kCycles = 4;
// The last frame stands where the first does in its cycle.
constexpr int kFrameCount = kFramesPerCycle * kCycles + 1;

struct Pose {
    Vec3 hips;                                // cm, in the world
    std::array<Rotation, kJointCount> local;  // by JointId: seen from the parent, from the T-pose
};

class GaitModel {
  public:
    explicit GaitModel(const Skeleton& skeleton);

    // `cycles` counts from the left foot's first contact. Fails with std::logic_error where a foot
    // is planned further from its hip than the leg is long.
    Pose At(double cycles) const;

  private:
    void PoseTrunk(double cycles, Pose& pose) const;
    void PoseLeg(Side side, double cycles, Pose& pose) const;
    void PoseArm(Side side, double cycles, Pose& pose) const;

    Skeleton skeleton_;
    FootPlan feet_;
};

}  // namespace examples
