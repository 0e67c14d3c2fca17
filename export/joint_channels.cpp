#include "export/joint_channels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "export/finite_check.h"
#include "export/run_parts.h"
#include "export/scene_angles.h"
#include "headless/transform.h"

namespace exporters {
namespace {

using headless::Transform;

// The shares of the time after which the ways are chosen and the poses evaluated.
constexpr double kChosenShare = 0.3;
constexpr double kEvaluatedShare = 0.8;

// If the sum of the three differences is below 180 degrees, no other angles of the same rotation
// are nearer: those that differ by whole turns are farther, and the sum of the differences between
// two other solutions (see AnglesNear) is at least 360 degrees.
bool IsNear(const SceneAngles& angles, const SceneAngles& before) {
    return std::abs(angles[0] - before[0]) + std::abs(angles[1] - before[1]) +
               std::abs(angles[2] - before[2]) <
           180.0;
}

}  // namespace

JointChannels::JointChannels(const headless::Scene& scene, const headless::Object& model,
                             const ExportedMotion& motion, std::vector<double> frames,
                             bool turnsTop, const AngleChoice& angles, const Progress& progress)
    : motion_(motion),
      frames_(std::move(frames)),
      turnsTop_(turnsTop),
      choice_(angles),
      objects_(scene, model, motion, frames_),
      ways_(motion.Joints().size(), Way::Objects),
      ranges_(kCount * ways_.size()),
      slots_(kCount * ways_.size(), kNone) {
    const std::size_t joints = ways_.size();
    const std::size_t parts = PartsFor(joints * frames_.size());
    // As the threads run at the same time, only one of them reports progress.
    const auto progressOf = [&](std::size_t part, double from, double to) {
        return part == 0 ? progress.Between(from, to) : Progress();
    };
    RunParts(parts, [&](std::size_t part) {
        ChooseWays(part * joints / parts, (part + 1) * joints / parts,
                   progressOf(part, 0.0, kChosenShare));
    });
    ReserveSlots();
    if (std::find(ways_.begin(), ways_.end(), Way::Poses) != ways_.end())
        RunParts(parts, [&](std::size_t part) {
            EvaluateFrames(part * frames_.size() / parts, (part + 1) * frames_.size() / parts,
                           progressOf(part, kChosenShare, kEvaluatedShare));
        });
    RunParts(parts, [&](std::size_t part) {
        const Progress own = progressOf(part, kEvaluatedShare, 1.0);
        const std::size_t first = part * joints / parts;
        const std::size_t end = (part + 1) * joints / parts;
        std::vector<double> values(frames_.size());
        for (std::size_t joint = first; joint < end; ++joint) {
            own.Report(joint - first, end - first);
            FinishJoint(joint, values);
        }
    });
}

// Chooses the ways of the joints from `first` to `end` - 1.
void JointChannels::ChooseWays(std::size_t first, std::size_t end, const Progress& progress) {
    for (std::size_t joint = first; joint < end; ++joint) {
        progress.Report(joint - first, end - first);
        const bool isTurned =
            turnsTop_ && motion_.Turn() && motion_.Joints()[joint].parent == Joint::kNoParent;
        if (!objects_.Has(joint) || isTurned)
            ways_[joint] = Way::Poses;
        else if (!KeepsAngles(joint))
            ways_[joint] = Way::Angles;
    }
}

// Whether the angles of the joint's object are those that are to be read.
bool JointChannels::KeepsAngles(std::size_t joint) const {
    std::vector<double> x(frames_.size());
    std::vector<double> y(frames_.size());
    std::vector<double> z(frames_.size());
    objects_.Read(joint, 3, x);
    objects_.Read(joint, 4, y);
    objects_.Read(joint, 5, z);
    for (std::size_t frame = 0; frame < frames_.size(); ++frame) {
        const SceneAngles angles = {x[frame], y[frame], z[frame]};
        for (const double angle : angles)
            if (std::abs(angle) > choice_.farthest) return false;
        if (choice_.keepsSceneAngles || frame == 0) continue;
        const SceneAngles before = {x[frame - 1], y[frame - 1], z[frame - 1]};
        if (!IsNear(angles, before) && AnglesNear(angles, before) != angles) return false;
    }
    return true;
}

void JointChannels::ReserveSlots() {
    std::size_t count = 0;
    for (std::size_t index = 0; index < slots_.size(); ++index) {
        const Way way = ways_[index / kCount];
        const bool isAngle = index % kCount >= 3;
        if (way == Way::Poses || (way == Way::Angles && isAngle)) slots_[index] = count++;
    }
    if (count > 0) stored_ = LargeArray<double>(count * frames_.size());
}

// Evaluates the frames from `first` to `end` - 1.
void JointChannels::EvaluateFrames(std::size_t first, std::size_t end, const Progress& progress) {
    std::vector<Transform> locals(ways_.size());
    ExportedMotion::Scratch scratch;
    for (std::size_t frame = first; frame < end; ++frame) {
        progress.Report(frame - first, end - first);
        motion_.Locals(frames_[frame], locals, scratch);
        if (turnsTop_) motion_.TurnTopJoints(locals);
        for (std::size_t joint = 0; joint < ways_.size(); ++joint) {
            if (ways_[joint] != Way::Poses) continue;
            if (!HoldsFiniteNumbers(locals[joint]))
                throw ExportError("the position or rotation of a joint is not a finite number");
            const SceneAngles angles = FastAnglesOf(locals[joint].axes);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                Stored(joint, axis)[frame] = locals[joint].origin[axis];
                Stored(joint, 3 + axis)[frame] = angles[axis];
            }
        }
    }
}

// Completes the stored channels of a joint and measures all channels. `values` is memory for the
// values of a channel.
void JointChannels::FinishJoint(std::size_t joint, std::span<double> values) {
    if (ways_[joint] == Way::Angles)
        for (std::size_t channel = 3; channel < kCount; ++channel)
            objects_.Read(joint, channel, {Stored(joint, channel), frames_.size()});
    if (ways_[joint] != Way::Objects) ChooseAngles(joint);
    for (std::size_t channel = 0; channel < kCount; ++channel) {
        Read(joint, channel, values);
        const auto [least, most] = std::minmax_element(values.begin(), values.end());
        ranges_[kCount * joint + channel] = {values.front(), *least, *most};
    }
}

void JointChannels::ChooseAngles(std::size_t joint) {
    const bool isNear = ways_[joint] == Way::Poses || !choice_.keepsSceneAngles;
    double* const stored[3] = {Stored(joint, 3), Stored(joint, 4), Stored(joint, 5)};
    SceneAngles before{};
    for (std::size_t frame = 0; frame < frames_.size(); ++frame) {
        SceneAngles angles = {stored[0][frame], stored[1][frame], stored[2][frame]};
        if (isNear && frame > 0 && !IsNear(angles, before)) angles = AnglesNear(angles, before);
        for (std::size_t axis = 0; axis < 3; ++axis) {
            if (std::abs(angles[axis]) > choice_.farthest)
                angles[axis] -= 360.0 * std::round(angles[axis] / 360.0);
            stored[axis][frame] = angles[axis];
        }
        before = angles;
    }
}

void JointChannels::Read(std::size_t joint, std::size_t channel, std::span<double> values) const {
    const std::size_t slot = slots_[kCount * joint + channel];
    if (slot == kNone) return objects_.Read(joint, channel, values);
    std::copy_n(stored_.data() + slot * frames_.size(), frames_.size(), values.begin());
}

}  // namespace exporters
