#include "export/joint_channels.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "export/finite_check.h"
#include "export/run_parts.h"
#include "export/scene_angles.h"
#include "headless/transform.h"

namespace exporters {
namespace {

using headless::Transform;

constexpr double kFarthestTurn = 720.0;  // degrees
// The share of the time after which all joints are measured that are not computed.
constexpr double kMeasuredShare = 0.4;

// The sum is infinite or NaN if one of the numbers in it is.
bool IsFiniteTransform(const Transform& transform) {
    double sum = 0.0;
    for (int row = 0; row < 3; ++row) {
        sum += std::abs(transform.origin[row]);
        for (int column = 0; column < 3; ++column)
            sum += std::abs(transform.axes[row][column]);
    }
    return IsFinite(sum);
}

}  // namespace

JointChannels::JointChannels(const headless::Scene& scene, const headless::Object& model,
                             const ExportedMotion& motion, std::vector<double> frames,
                             bool turnsTop, const Progress& progress)
    : motion_(motion),
      frames_(std::move(frames)),
      turnsTop_(turnsTop),
      objects_(scene, model, motion, frames_),
      ranges_(kCount * motion.Joints().size()),
      slots_(motion.Joints().size(), kNone) {
    const std::size_t joints = slots_.size();
    const std::size_t parts = PartsFor(joints * frames_.size());
    // As the threads run at the same time, only one of them reports progress.
    const auto progressOf = [&](std::size_t part, double from, double to) {
        return part == 0 ? progress.Between(from, to) : Progress();
    };
    std::vector<char> turnsFar(joints, 0);
    RunParts(parts, [&](std::size_t part) {
        const Progress own = progressOf(part, 0.0, kMeasuredShare);
        MeasureObjects(part * joints / parts, (part + 1) * joints / parts, turnsFar, own);
    });
    ChooseStored(turnsFar);
    if (stored_.size() == 0) return;
    RunParts(parts, [&](std::size_t part) {
        const Progress own = progressOf(part, kMeasuredShare, 1.0);
        EvaluateFrames(part * frames_.size() / parts, (part + 1) * frames_.size() / parts, own);
    });
    RunParts(parts, [&](std::size_t part) {
        for (std::size_t joint = part * joints / parts; joint < (part + 1) * joints / parts;
             ++joint)
            if (slots_[joint] != kNone) FinishStored(joint);
    });
}

// Measures the channels of the joints from `first` to `end` - 1 that can be read from their
// objects.
void JointChannels::MeasureObjects(std::size_t first, std::size_t end, std::vector<char>& turnsFar,
                                   const Progress& progress) {
    std::vector<double> values(frames_.size());
    for (std::size_t joint = first; joint < end; ++joint) {
        progress.Report(joint - first, end - first);
        if (!objects_.Has(joint)) continue;
        for (std::size_t channel = 0; channel < kCount; ++channel) {
            objects_.Read(joint, channel, values);
            Measure(joint, channel, values);
        }
        turnsFar[joint] = TurnsFar(joint) ? 1 : 0;
    }
}

void JointChannels::ChooseStored(const std::vector<char>& turnsFar) {
    std::size_t count = 0;
    for (std::size_t joint = 0; joint < slots_.size(); ++joint) {
        const bool isTurned =
            turnsTop_ && motion_.Turn() && motion_.Joints()[joint].parent == Joint::kNoParent;
        if (!objects_.Has(joint) || turnsFar[joint] != 0 || isTurned) slots_[joint] = count++;
    }
    if (count > 0) stored_ = LargeArray<double>(count * kCount * frames_.size());
}

// Computes the stored joints in the frames from `first` to `end` - 1.
void JointChannels::EvaluateFrames(std::size_t first, std::size_t end, const Progress& progress) {
    std::vector<Transform> locals(slots_.size());
    ExportedMotion::Scratch scratch;
    for (std::size_t frame = first; frame < end; ++frame) {
        progress.Report(frame - first, end - first);
        motion_.Locals(frames_[frame], locals, scratch);
        if (turnsTop_) motion_.TurnTopJoints(locals);
        for (std::size_t joint = 0; joint < slots_.size(); ++joint) {
            if (slots_[joint] == kNone) continue;
            if (!IsFiniteTransform(locals[joint]))
                throw ExportError("the position or rotation of a joint is not a finite number");
            const SceneAngles angles = FastAnglesOf(locals[joint].axes);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                Stored(joint, axis)[frame] = locals[joint].origin[axis];
                Stored(joint, 3 + axis)[frame] = angles[axis];
            }
        }
    }
}

void JointChannels::FinishStored(std::size_t joint) {
    Unwind(joint);
    const auto measure = [&] {
        for (std::size_t channel = 0; channel < kCount; ++channel)
            Measure(joint, channel, {Stored(joint, channel), frames_.size()});
    };
    measure();
    if (!TurnsFar(joint)) return;
    Rewind(joint);
    measure();
}

void JointChannels::Measure(std::size_t joint, std::size_t channel,
                            std::span<const double> values) {
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    ranges_[kCount * joint + channel] = {values.front(), *least, *most};
}

bool JointChannels::TurnsFar(std::size_t joint) const {
    for (std::size_t channel = 3; channel < kCount; ++channel) {
        const Range& range = RangeOf(joint, channel);
        if (std::max(std::abs(range.least), std::abs(range.most)) > kFarthestTurn) return true;
    }
    return false;
}

void JointChannels::Unwind(std::size_t joint) {
    double* const x = Stored(joint, 3);
    double* const y = Stored(joint, 4);
    double* const z = Stored(joint, 5);
    for (std::size_t frame = 1; frame < frames_.size(); ++frame) {
        const SceneAngles angles =
            AnglesNear({x[frame], y[frame], z[frame]}, {x[frame - 1], y[frame - 1], z[frame - 1]});
        std::tie(x[frame], y[frame], z[frame]) = std::tuple_cat(angles);
    }
}

// Replaces the angles by those that FastAnglesOf returns.
void JointChannels::Rewind(std::size_t joint) {
    double* const x = Stored(joint, 3);
    double* const y = Stored(joint, 4);
    double* const z = Stored(joint, 5);
    for (std::size_t frame = 0; frame < frames_.size(); ++frame) {
        const Transform turned = headless::FromLocal({0.0, 0.0, 0.0, x[frame], y[frame], z[frame]});
        std::tie(x[frame], y[frame], z[frame]) = std::tuple_cat(FastAnglesOf(turned.axes));
    }
}

void JointChannels::Read(std::size_t joint, std::size_t channel, std::span<double> values) const {
    if (slots_[joint] == kNone) return objects_.Read(joint, channel, values);
    const double* const stored =
        stored_.data() + (kCount * slots_[joint] + channel) * frames_.size();
    std::copy_n(stored, frames_.size(), values.begin());
}

}  // namespace exporters
