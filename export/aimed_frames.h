// Turns the frames of joints so that their y axes run along the bones.
// Internal to export/.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/clean_skeleton.h"
#include "headless/transform.h"
#include "math/pose_lanes.h"

namespace exporters {

// Some programs draw a bone along the y axis of its joint. Files often have the same axes in all
// joints at rest, so such a program draws all bones in the same direction. AimedFrames gives each
// joint a frame that is turned against the old one by a constant rotation. Positions do not change.
//
// The new y axis points to one of the joint's children at rest: to the one that continues the
// direction from the joint's parent best or, if the joint has no parent, to the one with the most
// joints under it. A joint without children keeps the direction of its parent. The new z axis is as
// near as possible to the z axis of the scene or, if the bone is nearly parallel to that axis, to
// the y axis.
class AimedFrames {
  public:
    // `globals` has the global transform of each joint in the base pose, with the y axis up.
    AimedFrames(const std::vector<Joint>& joints, std::span<const headless::Transform> globals);

    // Replaces the local transforms of a pose by those of the new frames. Joints without a parent
    // are as seen from the scene or from a node above them.
    void ApplyToLocals(std::span<headless::Transform> locals) const;
    // The same for many poses of one joint.
    void ApplyToLocals(std::size_t joint, math::PoseLanes& locals) const;
    // Replaces the global transforms of a pose by those of the new frames.
    void ApplyToGlobals(std::span<headless::Transform> globals) const;

  private:
    std::vector<std::size_t> parents_;
    std::vector<headless::Transform> turns_;     // from a joint's new frame to its old one
    std::vector<headless::Transform> inverses_;  // of turns_
};

}  // namespace exporters
