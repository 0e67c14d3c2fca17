#include "export/exported_motion.h"

#include <algorithm>
#include <iterator>

#include "export/finite_check.h"
#include "export/pose_blend.h"
#include "export/skeleton_size.h"
#include "headless/key_times.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;

// The rows are the turned x, y and z axis.
constexpr Transform kXUpToYUp = {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}, {0, 0, 0}};
constexpr Transform kZUpToYUp = {{{1, 0, 0}, {0, 0, -1}, {0, 1, 0}}, {0, 0, 0}};

std::optional<Transform> TurnOf(const Options& options) {
    switch (options.up) {
        case UpAxis::X:
            return kXUpToYUp;
        case UpAxis::Z:
            return kZUpToYUp;
        case UpAxis::Y:
            break;
    }
    return std::nullopt;
}

const Object& Checked(const Object& model) {
    RequireFinite(model, nullptr);
    return model;
}

Timeline CheckedTimes(const Object& model, const headless::ActionSource* motion,
                      const Options& options, bool even, Notes& notes) {
    RequireFinite(model, motion);
    return MakeTimeline(model, motion, options, even, notes);
}

}  // namespace

ExportedMotion::ExportedMotion(const headless::Scene& scene, const ExportedModel& model,
                               const Options& options)
    : poses_(scene, Checked(*model.object), model.index, nullptr, options),
      turn_(TurnOf(options)) {}

ExportedMotion::ExportedMotion(const headless::Scene& scene, const ExportedModel& model,
                               const headless::ActionSource* motion, const Options& options,
                               bool even, Notes& notes)
    : times_(CheckedTimes(*model.object, motion, options, even, notes)),
      poses_(scene, *model.object, model.index, times_.IsPose() ? nullptr : motion, options),
      turn_(TurnOf(options)),
      upAxis_(static_cast<std::size_t>(options.up)) {
    if (times_.IsPose()) return;
    motion_ = motion;
    keys_ = headless::KeyTimes(*motion);
    if (!options.inPlace || Joints().empty()) return;
    std::vector<Transform> locals(Joints().size());
    Scratch scratch;
    Locals(times_.frames.front(), locals, scratch);
    heldRoot_.emplace();
    std::copy_n(locals.front().origin, 3, heldRoot_->begin());
}

bool ExportedMotion::IsItsObject(std::size_t joint) const {
    return poses_.IsItsObject(joint) && !(heldRoot_ && Joints()[joint].parent == Joint::kNoParent);
}

void ExportedMotion::BaseLocals(std::span<Transform> locals) const {
    SkeletonPoses::Scratch scratch;
    poses_.BaseLocals(locals, scratch);
}

void ExportedMotion::Locals(double frame, std::span<Transform> locals, Scratch& scratch) const {
    const auto after = std::upper_bound(keys_.begin(), keys_.end(), frame);
    const auto before = static_cast<std::size_t>(std::distance(keys_.begin(), after));
    const bool isBetween = before > 0 && before < keys_.size() && keys_[before - 1] != frame;
    if (isBetween)
        Sample(frame, before - 1, locals, scratch);
    else
        poses_.Locals(frame, locals, scratch.poses);
    if (heldRoot_) HoldRoot(locals);
}

void ExportedMotion::Sample(double frame, std::size_t key, std::span<Transform> locals,
                            Scratch& scratch) const {
    if (scratch.atKey.empty() || scratch.key != key) {
        const bool isNext = !scratch.atKey.empty() && scratch.key + 1 == key;
        scratch.atKey.resize(locals.size());
        scratch.atNext.resize(locals.size());
        if (isNext)
            std::swap(scratch.atKey, scratch.atNext);
        else
            poses_.Locals(keys_[key], scratch.atKey, scratch.poses);
        poses_.Locals(keys_[key + 1], scratch.atNext, scratch.poses);
        scratch.key = key;
    }
    std::copy(scratch.atKey.begin(), scratch.atKey.end(), locals.begin());
    BlendPoses(locals, scratch.atNext, (frame - keys_[key]) / (keys_[key + 1] - keys_[key]));
}

// Moves all joints without a parent along the ground by the same distance, so that the first joint
// has its coordinates of the first frame.
void ExportedMotion::HoldRoot(std::span<Transform> locals) const {
    std::array<double, 3> moved{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (axis != upAxis_) moved[axis] = locals.front().origin[axis] - (*heldRoot_)[axis];
    for (std::size_t joint = 0; joint < locals.size(); ++joint) {
        if (Joints()[joint].parent != Joint::kNoParent) continue;
        for (std::size_t axis = 0; axis < 3; ++axis)
            locals[joint].origin[axis] -= moved[axis];
    }
    // A difference may be rounded, but the first joint has to stay exactly where it was.
    for (std::size_t axis = 0; axis < 3; ++axis)
        if (axis != upAxis_) locals.front().origin[axis] = (*heldRoot_)[axis];
}

void ExportedMotion::TurnTopJoints(std::span<Transform> locals) const {
    if (!turn_) return;
    for (std::size_t joint = 0; joint < locals.size(); ++joint)
        if (Joints()[joint].parent == Joint::kNoParent) locals[joint] = locals[joint] * *turn_;
}

// Turn() is a turn by a right angle, so it does not change the size.
double ExportedMotion::Size(const Timeline& times) const {
    std::vector<Transform> locals(Joints().size());
    std::vector<Transform> globals(Joints().size());
    BaseLocals(locals);
    ComputeGlobals(Joints(), locals, globals);
    const double size = BoxDiagonal(globals);
    if (times.frames.empty()) return size;
    Scratch scratch;
    Locals(times.frames.front(), locals, scratch);
    ComputeGlobals(Joints(), locals, globals);
    return std::max(size, BoxDiagonal(globals));
}

std::vector<ExportedModel> ExportedModels(const headless::Scene& scene, const Options& options) {
    const std::vector<const Object*> models = scene.Models();
    const std::size_t count = std::min(models.size(), options.models.value_or(models.size()));
    if (count == 0) throw ExportError("there is no model to write");
    std::vector<ExportedModel> exported;
    for (std::size_t index = 0; index < count; ++index)
        exported.push_back({models[index], index});
    return exported;
}

}  // namespace exporters
