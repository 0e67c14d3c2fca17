#include "export/tables.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "export/finite_check.h"
#include "export/motion_facts.h"
#include "export/readable_name.h"
#include "headless/text.h"

namespace exporters {
namespace {

using headless::Object;
using headless::Transform;

// Compares two rates. The rates of models from one file may differ in their last digits.
bool SameRate(double a, double b) {
    return std::abs(a - b) <= 1e-9 * std::max(a, b);
}

}  // namespace

Table::Table(const headless::Scene& scene, const Options& options, bool even) {
    const std::vector<ExportedModel> models = ExportedModels(scene, options);
    motions_.reserve(models.size());
    for (const ExportedModel& model : models) {
        const ExportedMotion& motion =
            motions_.emplace_back(scene, model, MotionOf(*model.object), options, even, notes_);
        const Timeline& timeline = motion.Times();
        if (!timeline.IsPose() && !timeline_.IsPose() && !timeline.sampleRate &&
            !SameRate(timeline.secondsPerFrame, timeline_.secondsPerFrame))
            throw ExportError(
                fmt::format("{}: its rate differs from that of an earlier model, but this output "
                            "has only one rate"
                            " (--resample N samples all at one rate)",
                            ReadableName(model.object->name)));
        if (timeline.frames.size() > timeline_.frames.size()) timeline_ = timeline;
        AddColumns(*model.object, motion, models.size() > 1);
    }
}

void Table::AddColumns(const Object& model, const ExportedMotion& motion, bool several) {
    const std::size_t first = columns_.size();
    std::vector<Transform> locals(motion.Joints().size());
    motion.BaseLocals(locals);
    motion.TurnTopJoints(locals);
    const std::wstring prefix =
        several ? std::wstring(headless::View(model.name)) + L'.' : std::wstring();
    for (std::size_t index = 0; index < locals.size(); ++index) {
        const Joint& joint = motion.Joints()[index];
        columns_.push_back({prefix + joint.name, joint.sourceName,
                            joint.parent == Joint::kNoParent ? joint.parent : first + joint.parent,
                            joint.isEndSite, locals[index]});
    }
}

std::int64_t Table::FrameNumber(std::size_t row) const {
    return timeline_.IsPose() ? 0 : timeline_.Number(row);
}

double Table::Seconds(std::size_t row) const {
    return timeline_.IsPose() ? 0.0 : timeline_.Seconds(row);
}

void Table::Row(std::size_t row, std::span<Transform> locals, std::span<Transform> globals,
                Scratch& scratch) const {
    scratch.motions.resize(motions_.size());
    std::size_t first = 0;
    for (std::size_t index = 0; index < motions_.size(); ++index) {
        const ExportedMotion& motion = motions_[index];
        const std::size_t joints = motion.Joints().size();
        const std::span<Transform> ownLocals = locals.subspan(first, joints);
        motion.Locals(FrameOf(motion, row), ownLocals, scratch.motions[index]);
        motion.TurnTopJoints(ownLocals);
        ComputeGlobals(motion.Joints(), ownLocals, globals.subspan(first, joints));
        first += joints;
    }
    if (!std::all_of(globals.begin(), globals.end(), HoldsFiniteNumbers))
        throw ExportError(
            fmt::format("the position or rotation of a joint is not a finite number in frame {}",
                        FrameNumber(row)));
}

// Samples of models with different rates are at different frame numbers, but at the same times.
double Table::FrameOf(const ExportedMotion& motion, std::size_t row) const {
    if (timeline_.IsPose()) return 0.0;
    const Timeline& own = motion.Times();
    if (!timeline_.sampleRate || own.IsPose()) return timeline_.frames[row];
    return own.frames.front() + timeline_.Seconds(row) / own.secondsPerFrame;
}

double Table::Size() const {
    double size = 0.0;
    for (const ExportedMotion& motion : motions_)
        size = std::max(size, motion.Size(timeline_));
    return size;
}

}  // namespace exporters
