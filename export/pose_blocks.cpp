#include "export/pose_blocks.h"

#include <algorithm>
#include <utility>

#include "export/lane_poses.h"

namespace exporters {

using headless::Transform;
using math::kPoseLanes;
using math::PoseLanes;

PoseBlocks::PoseBlocks(const headless::Scene& scene, const headless::Object& model,
                       const ExportedMotion& motion, std::vector<double> frames, bool turnsTop)
    : motion_(motion),
      frames_(std::move(frames)),
      objects_(scene, model, motion, frames_),
      turnsTop_(turnsTop && motion.Turn().has_value()),
      slots_(motion.Joints().size(), kNone) {
    for (std::size_t joint = 0; joint < slots_.size(); ++joint) {
        if (objects_.Has(joint)) continue;
        slots_[joint] = evaluated_.size();
        evaluated_.push_back(joint);
    }
}

void PoseBlocks::Begin(std::size_t first, std::size_t count, Scratch& scratch) const {
    scratch.first = first;
    scratch.count = count;
    if (evaluated_.empty()) return;
    scratch.locals.resize(slots_.size());
    scratch.evaluated.resize(evaluated_.size() * count);
    for (std::size_t index = 0; index < count; ++index) {
        motion_.Locals(frames_[first + index], scratch.locals, scratch.motion);
        for (std::size_t slot = 0; slot < evaluated_.size(); ++slot)
            scratch.evaluated[slot * count + index] = scratch.locals[evaluated_[slot]];
    }
}

void PoseBlocks::Local(std::size_t joint, const Scratch& scratch, PoseLanes& pose) const {
    if (slots_[joint] == kNone)
        objects_.ReadPoses(joint, scratch.first, scratch.count, pose);
    else
        Evaluated(slots_[joint], scratch, pose);
    if (turnsTop_ && Joints()[joint].parent == Joint::kNoParent) TurnPoses(*motion_.Turn(), pose);
}

void PoseBlocks::Evaluated(std::size_t slot, const Scratch& scratch, PoseLanes& pose) const {
    const Transform* const transforms = &scratch.evaluated[slot * scratch.count];
    for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
        PutPose(transforms[std::min(lane, scratch.count - 1)], lane, pose);
}

}  // namespace exporters
