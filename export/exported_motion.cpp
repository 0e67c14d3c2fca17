#include "export/exported_motion.h"

#include "export/finite_check.h"

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
                      const Options& options, Notes& notes) {
    RequireFinite(model, motion);
    return MakeTimeline(model, motion, options, notes);
}

}  // namespace

ExportedMotion::ExportedMotion(const headless::Scene& scene, const Object& model,
                               const Options& options)
    : poses_(scene, Checked(model), nullptr, options.scale), turn_(TurnOf(options)) {}

ExportedMotion::ExportedMotion(const headless::Scene& scene, const Object& model,
                               const headless::ActionSource* motion, const Options& options,
                               Notes& notes)
    : times_(CheckedTimes(model, motion, options, notes)),
      poses_(scene, model, times_.IsPose() ? nullptr : motion, options.scale),
      turn_(TurnOf(options)) {
    if (!times_.IsPose()) motion_ = motion;
}

void ExportedMotion::TurnTopJoints(std::span<Transform> locals) const {
    if (!turn_) return;
    for (std::size_t joint = 0; joint < locals.size(); ++joint)
        if (Joints()[joint].parent == Joint::kNoParent) locals[joint] = locals[joint] * *turn_;
}

void ExportedMotion::TurnAll(std::span<Transform> globals) const {
    if (!turn_) return;
    for (Transform& global : globals)
        global = global * *turn_;
}

void ExportedMotion::BaseGlobals(std::span<Transform> globals) {
    poses_.BaseGlobals(globals);
    TurnAll(globals);
}

void ExportedMotion::Globals(double frame, std::span<Transform> globals) {
    poses_.Globals(frame, globals);
    TurnAll(globals);
}

double ExportedMotion::Size(const Timeline& times) {
    // Turn() is a turn by a right angle, so it does not change the size.
    return SkeletonSize(poses_, times.frames);
}

std::vector<const Object*> ExportedModels(const headless::Scene& scene, const Options& options) {
    std::vector<const Object*> models = scene.Models();
    if (options.models && *options.models < models.size()) models.resize(*options.models);
    if (models.empty()) throw ExportError("there is no model to write");
    return models;
}

}  // namespace exporters
