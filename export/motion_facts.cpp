#include "export/motion_facts.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "export/finite_check.h"
#include "headless/evaluation.h"
#include "headless/key_times.h"
#include "headless/object_walk.h"

namespace exporters {
namespace {

using headless::ActionSource;
using headless::Object;
using headless::ObjectType;

// A null under an effector is no joint of its own: it is at the end of a bone, and the bone is
// counted. A chain root that is not directly under the model is no joint of its own either, because
// it has the position of a joint that is counted.
bool IsJoint(const Object& object) {
    switch (object.type) {
        case ObjectType::ChainBone:
            return true;
        case ObjectType::Null:
            return !object.parent || object.parent->type != ObjectType::ChainEffector;
        case ObjectType::ChainRoot:
            return !object.parent || object.parent->type == ObjectType::Model;
        default:
            return false;
    }
}

std::size_t CountNonFinite(const std::vector<double>& values) {
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

ModelFacts MeasureModel(const Object& model) {
    ModelFacts facts;
    headless::WalkObjects(model, [&](const Object& object, std::size_t) {
        if (IsJoint(object)) ++facts.joints;
    });
    if (model.modelData && !model.modelData->actions.empty())
        facts.badRestValues = CountBadRestValues(*model.modelData->actions.front());
    if (const ActionSource* motion = MotionOf(model)) MeasureMotion(*motion, facts);
    return facts;
}

}  // namespace exporters
