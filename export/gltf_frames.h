// Places the frames of a model's joints for glTF.
// Internal to export/.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "export/aimed_frames.h"
#include "export/clean_skeleton.h"
#include "headless/transform.h"
#include "math/pose_lanes.h"

namespace exporters {

// With `aim`, turns the frames (see AimedFrames). It also decides the position of the node above
// the joints. Programs that draw bones make a bone as long as the distance to its nearest child.
// If all children of the root are at the root, some of them make its bone as long as the root's
// translation, or one unit long if that is 0. The node above the joints is therefore put so that
// the root's translation at rest is short compared with the figure.
class GltfFrames {
  public:
    // `globals` has the global transform of each joint in the base pose, with the y axis up.
    // `turn` is the rotation of the node above the joints; it may be empty.
    GltfFrames(const std::vector<Joint>& joints, std::span<const headless::Transform> globals,
               const std::optional<headless::Transform>& turn, bool aim);

    // The global transform of the node above the joints.
    const headless::Transform& Holder() const { return holder_; }
    // Replaces the local transforms of a pose, in which joints without a parent are as seen from
    // the scene before the turn, by those that the nodes get.
    void ApplyToLocals(std::span<headless::Transform> locals) const;
    // The same for many poses of one joint.
    void ApplyToLocals(std::size_t joint, math::PoseLanes& locals) const;
    // Replaces the global transforms of a pose by those of the turned frames.
    void ApplyToGlobals(std::span<headless::Transform> globals) const;

  private:
    std::optional<AimedFrames> aim_;
    headless::Transform holder_;
    // The position of the holder in the scene before the turn.
    std::array<double, 3> origin_{};
    std::vector<bool> isTop_;  // for each joint, whether it has no parent
};

}  // namespace exporters
