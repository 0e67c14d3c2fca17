// Computes the local poses of a model's joints for many frames at a time.
// Internal to export/.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/exported_motion.h"
#include "export/object_channels.h"
#include "headless/scene.h"
#include "math/pose_lanes.h"

namespace exporters {

// The poses are those of ExportedMotion::Locals, as quaternions. Where a joint's channels can be
// read from the curves of the scene (see ObjectChannels), its rotations are computed with vector
// instructions; the scene is evaluated only for the other joints. Positions are equal to those of
// the evaluation, quaternions within 1e-15 of them, apart from their sign.
class PoseBlocks {
  public:
    // `frames` are the frames of the motion. With `turnsTop`, the turn of the motion is applied to
    // the joints without a parent. Keeps references to the scene and to the motion.
    PoseBlocks(const headless::Scene& scene, const headless::Object& model,
               const ExportedMotion& motion, std::vector<double> frames, bool turnsTop);

    const std::vector<Joint>& Joints() const { return motion_.Joints(); }
    // Whether the joint is known to keep its position or its rotation of the base pose in all
    // frames.
    bool KeepsPosition(std::size_t joint) const { return objects_.KeepsPosition(joint); }
    bool KeepsRotation(std::size_t joint) const { return objects_.KeepsAngles(joint); }

    // The block that a thread works on.
    struct Scratch {
        std::size_t first = 0;
        std::size_t count = 0;
        ExportedMotion::Scratch motion;
        std::vector<headless::Transform> locals;
        std::vector<headless::Transform> evaluated;  // see evaluated_; joint after joint
    };
    // Begins the block of `count` frames, from 1 to math::kPoseLanes, from the index `first` on.
    // Several threads may use the blocks at the same time, each with a Scratch of its own.
    void Begin(std::size_t first, std::size_t count, Scratch& scratch) const;
    // Computes the poses of a joint in the frames of the block. The lanes that are not used repeat
    // the last pose. A pose depends only on its frame, and not on its block.
    void Local(std::size_t joint, const Scratch& scratch, math::PoseLanes& pose) const;

  private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    void Evaluated(std::size_t slot, const Scratch& scratch, math::PoseLanes& pose) const;

    const ExportedMotion& motion_;
    std::vector<double> frames_;
    ObjectChannels objects_;
    bool turnsTop_;
    std::vector<std::size_t> evaluated_;  // the joints for which the scene is evaluated
    std::vector<std::size_t> slots_;      // for each joint, its index in evaluated_, or kNone
};

}  // namespace exporters
