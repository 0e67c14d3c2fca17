#include "export/motion_facts.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "export/finite_check.h"
#include "export/skeleton_poses.h"
#include "headless/evaluation.h"
#include "headless/key_times.h"

namespace exporters {
namespace {

using headless::ActionSource;
using headless::Object;

std::size_t CountNonFinite(const headless::NumberArray& values) {
    return static_cast<std::size_t>(
        std::count_if(values.begin(), values.end(), std::not_fn(IsFinite)));
}

std::size_t CountBadRestValues(const ActionSource& pose) {
    return static_cast<std::size_t>(
        std::count_if(pose.items.begin(), pose.items.end(), [](const headless::ActionItem& item) {
            return item.active && !item.IsCurve() && !IsFinite(item.Value());
        }));
}

void MeasureMotion(const ActionSource& motion, ModelFacts& facts) {
    for (const headless::ActionItem& item : motion.items) {
        if (!item.active || !item.IsCurve()) continue;
        ++facts.curves;
        if (item.GetCurve().keys.values)
            facts.badKeys += CountNonFinite(*item.GetCurve().keys.values);
    }
    const std::vector<double> frames = headless::KeyTimes(motion);
    facts.frames = frames.size();
    if (!frames.empty()) {
        facts.firstFrame = frames.front();
        facts.lastFrame = frames.back();
    }
    const double seconds = headless::SecondsPerFrame(motion);
    if (IsFinite(seconds) && seconds > 0.0) facts.secondsPerFrame = seconds;
}

}  // namespace

const ActionSource* MotionOf(const Object& model) {
    // The first action is always the base pose.
    const bool hasMotion = model.modelData && model.modelData->actions.size() > 1;
    return hasMotion ? model.modelData->actions.back().get() : nullptr;
}

ModelFacts MeasureModel(const headless::Scene& scene, const Object& model,
                        const FileSkeleton* file) {
    Options options;
    if (file) options.skeletons = {*file};
    ModelFacts facts;
    const SkeletonPoses poses(scene, model, 0, nullptr, options);
    for (const Joint& joint : poses.Joints())
        ++(joint.isEndSite ? facts.endSites : facts.joints);
    const ActionSource* const motion = MotionOf(model);
    if (model.modelData && !model.modelData->actions.empty())
        facts.badRestValues = CountBadRestValues(*model.modelData->actions.front());
    if (motion) MeasureMotion(*motion, facts);
    return facts;
}

}  // namespace exporters
