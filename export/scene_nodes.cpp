#include "export/scene_nodes.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <unordered_set>

#include "headless/chain_end.h"

namespace exporters {
namespace {

using headless::Object;
using headless::ObjectType;
using headless::Transform;

// Returns the last bone of an effector's chain. Null if the chain has no bones or was deleted; such
// an effector keeps its parent in the scene.
const Object* LastBoneOf(const Object& effector) {
    const Object* const end = headless::EndOfChain(effector);
    return end != nullptr && end->type == ObjectType::ChainBone ? end : nullptr;
}

bool IsIdentity(const Transform& transform) {
    static constexpr double kAxes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int row = 0; row < 3; ++row) {
        if (transform.origin[row] != 0.0) return false;
        for (int column = 0; column < 3; ++column)
            if (transform.axes[row][column] != kAxes[row][column]) return false;
    }
    return true;
}

// Returns the coordinate of the origin of `point` along the X axis of `bone`.
double DistanceAlong(const Transform& bone, const Transform& point) {
    double distance = 0.0;
    for (int axis = 0; axis < 3; ++axis)
        distance += (point.origin[axis] - bone.origin[axis]) * bone.axes[0][axis];
    return distance;
}

// Returns the bones whose length the motion drives.
std::unordered_set<const Object*> DrivenLengths(const headless::Scene& scene, const Object& model,
                                                const headless::ActionSource* motion) {
    std::unordered_set<const Object*> bones;
    if (!motion) return bones;
    for (const headless::ActionItem& item : motion->items) {
        if (!item.active) continue;
        const auto target = scene.ResolveTarget(model, item);
        if (target.object && target.channel == headless::Channel::BoneLength)
            bones.insert(target.object);
    }
    return bones;
}

}  // namespace

SceneNodes::SceneNodes(const headless::Scene& scene, const Object& model,
                       const headless::ActionSource* motion)
    : base_(scene, model, nullptr), motion_(scene, model, motion) {
    CollectNodes(true);
    // An effector may be an ancestor of its own chain. As a child of the chain's last bone it would
    // be its own ancestor, and CollectNodes would not reach it. No effector gets a new parent then.
    if (nodes_.size() + 1 != base_.Objects().size()) CollectNodes(false);
    CollectEffectors(scene, model, motion);
    MarkDriven(scene, model);
}

void SceneNodes::CollectNodes(bool moveEffectors) {
    const std::vector<const Object*>& objects = base_.Objects();
    std::unordered_map<const Object*, std::size_t> indexOf;
    for (std::size_t index = 0; index < objects.size(); ++index)
        indexOf.emplace(objects[index], index);

    std::vector<std::vector<std::size_t>> children(objects.size());
    for (std::size_t index = 1; index < objects.size(); ++index) {
        std::size_t parent = base_.Parents()[index];
        if (moveEffectors && objects[index]->type == ObjectType::ChainEffector) {
            const auto bone = indexOf.find(LastBoneOf(*objects[index]));
            if (bone != indexOf.end()) parent = bone->second;
        }
        children[parent].push_back(index);
    }

    struct Pending {
        std::size_t index;
        std::size_t parent;
    };
    std::vector<Pending> pending;
    const auto push = [&](std::size_t index, std::size_t node) {
        for (auto child = children[index].rbegin(); child != children[index].rend(); ++child)
            pending.push_back({*child, node});
    };
    nodes_.clear();
    push(0, SceneNode::kNoParent);
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        nodes_.push_back({objects[next.index], next.parent, next.index});
        push(next.index, nodes_.size() - 1);
    }
}

void SceneNodes::CollectEffectors(const headless::Scene& scene, const Object& model,
                                  const headless::ActionSource* motion) {
    const auto driven = DrivenLengths(scene, model, motion);
    for (std::size_t node = 0; node < nodes_.size(); ++node) {
        const Object& object = *nodes_[node].object;
        if (object.type != ObjectType::ChainEffector) continue;
        const Object* bone = LastBoneOf(object);
        const std::size_t parent = nodes_[node].parent;
        if (!bone || parent == SceneNode::kNoParent || nodes_[parent].object != bone) continue;
        const bool isDriven = driven.contains(bone);
        effectors_.push_back({node, nodes_[node].index, nodes_[parent].index, isDriven});
        needsGlobals_ |= isDriven;
    }
}

void SceneNodes::LocalsOf(const headless::MotionEvaluator& evaluator, double frame, bool usesMotion,
                          std::span<Transform> locals, Scratch& scratch) const {
    std::vector<Transform>& objects = scratch.objects;
    objects.resize(base_.Objects().size());
    evaluator.EvaluateLocal(frame, objects);
    const bool isModelAtOrigin = IsIdentity(objects[0]);
    for (std::size_t node = 0; node < nodes_.size(); ++node) {
        locals[node] = objects[nodes_[node].index];
        if (nodes_[node].parent == SceneNode::kNoParent && !isModelAtOrigin)
            locals[node] = locals[node] * objects[0];
    }
    std::vector<Transform>& globals = scratch.globals;
    if (usesMotion && needsGlobals_) {
        globals.resize(objects.size());
        evaluator.Evaluate(frame, globals);
    }
    for (const Effector& effector : effectors_) {
        const Object& object = *nodes_[effector.node].object;
        const double length = usesMotion && effector.lengthIsDriven
                                  ? DistanceAlong(globals[effector.bone], globals[effector.object])
                                  : headless::EndOfChain(object)->length;
        locals[effector.node] = headless::EffectorSeenFromEnd(object, length);
    }
}

void SceneNodes::MarkDriven(const headless::Scene& scene, const Object& model) {
    isDriven_.assign(nodes_.size(), false);
    isRotated_.assign(nodes_.size(), false);
    modelMoves_ = true;
    if (!model.modelData) return;
    std::unordered_set<const Object*> driven;
    std::unordered_set<const Object*> rotated;
    // The first action is the base pose; all others are motions.
    const auto& actions = model.modelData->actions;
    for (std::size_t action = 1; action < actions.size(); ++action) {
        for (const headless::ActionItem& item : actions[action]->items) {
            if (!item.active) continue;
            const auto target = scene.ResolveTarget(model, item);
            driven.insert(target.object);
            if (target.channel >= headless::Channel::RotX &&
                target.channel <= headless::Channel::RotZ)
                rotated.insert(target.object);
        }
    }
    modelMoves_ = model.parent || driven.contains(&model) || model.local != std::array<double, 6>{};
    for (std::size_t node = 0; node < nodes_.size(); ++node) {
        isDriven_[node] = driven.contains(nodes_[node].object);
        isRotated_[node] = rotated.contains(nodes_[node].object);
    }
}

void SceneNodes::Locals(double frame, std::span<Transform> locals, Scratch& scratch) const {
    LocalsOf(motion_, frame, true, locals, scratch);
}
void SceneNodes::BaseLocals(std::span<Transform> locals, Scratch& scratch) const {
    LocalsOf(base_, 0.0, false, locals, scratch);
}

}  // namespace exporters
