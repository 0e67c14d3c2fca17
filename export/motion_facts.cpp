#include "export/motion_facts.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "export/finite_check.h"
#include "headless/chain_end.h"
#include "headless/evaluation.h"
#include "headless/key_times.h"
#include "headless/object_walk.h"
#include "headless/text.h"

namespace exporters {
namespace {

using headless::ActionSource;
using headless::Object;
using headless::ObjectType;

bool IsNumber(std::wstring_view text) {
    return text.find_first_not_of(L"0123456789") == std::wstring_view::npos;
}

// Whether an importer made `name` from `start` and `suffix`. If a name is in use, the host adds a
// number to it. So there may be a number after the suffix, and also in the name of the object that
// `start` belongs to, if the importer made `name` from that object's name in the file.
bool IsDerived(std::wstring_view name, std::wstring_view start, std::wstring_view suffix) {
    const std::size_t suffixAt = name.rfind(suffix);
    if (suffixAt == std::wstring_view::npos || !IsNumber(name.substr(suffixAt + suffix.size())))
        return false;
    const std::wstring_view nameInFile = name.substr(0, suffixAt);
    return start.starts_with(nameInFile) && IsNumber(start.substr(nameInFile.size()));
}

// Counts the joints and the end sites of a model.
class JointCounter {
  public:
    // If `motion` is null, no object is driven.
    explicit JointCounter(const ActionSource* motion) {
        if (!motion) return;
        for (const headless::ActionItem& item : motion->items)
            if (item.active && item.IsCurve()) driven_.insert(headless::View(item.object));
    }

    void Count(const Object& object, ModelFacts& facts) const {
        switch (object.type) {
            case ObjectType::ChainBone:
                if (!IsStartAtParent(object)) ++facts.joints;
                break;
            case ObjectType::Null:
                ++(IsEndSite(object) ? facts.endSites : facts.joints);
                break;
            case ObjectType::ChainEffector:
                if (IsEndOfBranch(object)) ++facts.endSites;
                break;
            default:
                break;
        }
    }

  private:
    bool IsDriven(const Object& object) const {
        return driven_.contains(headless::View(object.name));
    }

    // The importers name an end site of the joint "X" "X_End".
    bool IsEndSite(const Object& object) const {
        return object.firstChild == nullptr && object.parent != nullptr && !IsDriven(object) &&
               IsDerived(headless::View(object.name), headless::View(object.parent->name), L"_End");
    }

    // Whether a bone is the first one of a chain and leads from the parent joint to the chain's
    // first joint. Such a bone is no joint of the file. The importers name a chain that starts at
    // its parent "X" "XRoot".
    bool IsStartAtParent(const Object& bone) const {
        const Object* const root = bone.chainRoot;
        if (root == nullptr || root->chainData->bones.empty()) return false;
        if (root->chainData->bones.front() != &bone || root->parent == nullptr) return false;
        return !IsDriven(bone) &&
               IsDerived(headless::View(root->name), headless::View(root->parent->name), L"Root");
    }

    // Whether nothing continues the skeleton where the effector's chain ends.
    static bool IsEndOfBranch(const Object& effector) {
        const Object* const end = headless::EndOfChain(effector);
        return effector.firstChild == nullptr && end != nullptr &&
               end->type == ObjectType::ChainBone;
    }

    std::unordered_set<std::wstring_view> driven_;  // the names of the objects with curves
};

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
    const ActionSource* const motion = MotionOf(model);
    const JointCounter counter(motion);
    headless::WalkObjects(model,
                          [&](const Object& object, std::size_t) { counter.Count(object, facts); });
    if (model.modelData && !model.modelData->actions.empty())
        facts.badRestValues = CountBadRestValues(*model.modelData->actions.front());
    if (motion) MeasureMotion(*motion, facts);
    return facts;
}

}  // namespace exporters
