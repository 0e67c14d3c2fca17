#include "export/skeleton_poses.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <unordered_set>

#include "export/finite_check.h"
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

void Scale(Transform& transform, double scale) {
    for (double& coordinate : transform.origin)
        coordinate *= scale;
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

struct Box {
    static constexpr double kFar = std::numeric_limits<double>::infinity();
    double least[3] = {kFar, kFar, kFar};
    double most[3] = {-kFar, -kFar, -kFar};

    void Add(const Transform& transform) {
        for (int axis = 0; axis < 3; ++axis) {
            least[axis] = std::min(least[axis], transform.origin[axis]);
            most[axis] = std::max(most[axis], transform.origin[axis]);
        }
    }
    double Diagonal() const {
        return std::hypot(most[0] - least[0], most[1] - least[1], most[2] - least[2]);
    }
};

double SizeOf(const std::vector<Transform>& globals) {
    Box box;
    for (const Transform& global : globals)
        box.Add(global);
    const double size = globals.empty() ? 0.0 : box.Diagonal();
    return IsFinite(size) ? size : 0.0;
}

}  // namespace

SkeletonPoses::SkeletonPoses(const headless::Scene& scene, const Object& model,
                             const headless::ActionSource* motion, double scale)
    : base_(scene, model, nullptr), motion_(scene, model, motion), scale_(scale) {
    CollectJoints(true);
    // An effector may be an ancestor of its own chain. As a child of the chain's last bone it would
    // be its own ancestor, and CollectJoints would not reach it. No effector gets a new parent
    // then.
    if (joints_.size() + 1 != base_.Objects().size()) CollectJoints(false);
    CollectEffectors(scene, model, motion);
}

void SkeletonPoses::CollectJoints(bool moveEffectors) {
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
    const auto push = [&](std::size_t index, std::size_t joint) {
        for (auto child = children[index].rbegin(); child != children[index].rend(); ++child)
            pending.push_back({*child, joint});
    };
    joints_.clear();
    objectOf_.clear();
    push(0, Joint::kNoParent);
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        if (next.parent != Joint::kNoParent) joints_[next.parent].isLeaf = false;
        joints_.push_back({objects[next.index], next.parent, true});
        objectOf_.push_back(next.index);
        push(next.index, joints_.size() - 1);
    }
}

void SkeletonPoses::CollectEffectors(const headless::Scene& scene, const Object& model,
                                     const headless::ActionSource* motion) {
    const auto driven = DrivenLengths(scene, model, motion);
    for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
        const Object& object = *joints_[joint].object;
        if (object.type != ObjectType::ChainEffector) continue;
        const Object* bone = LastBoneOf(object);
        const std::size_t parent = joints_[joint].parent;
        if (!bone || parent == Joint::kNoParent || joints_[parent].object != bone) continue;
        const bool isDriven = driven.contains(bone);
        effectors_.push_back({joint, objectOf_[joint], objectOf_[parent], isDriven});
        needsGlobals_ |= isDriven;
    }
}

void SkeletonPoses::LocalsOf(const headless::MotionEvaluator& evaluator, double frame,
                             bool usesMotion, std::span<Transform> locals, Scratch& scratch) const {
    std::vector<Transform>& objects = scratch.objects;
    objects.resize(base_.Objects().size());
    evaluator.EvaluateLocal(frame, objects);
    const bool isModelAtOrigin = IsIdentity(objects[0]);
    for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
        locals[joint] = objects[objectOf_[joint]];
        if (joints_[joint].parent == Joint::kNoParent && !isModelAtOrigin)
            locals[joint] = locals[joint] * objects[0];
    }
    std::vector<Transform>& globals = scratch.globals;
    if (usesMotion && needsGlobals_) {
        globals.resize(objects.size());
        evaluator.Evaluate(frame, globals);
    }
    for (const Effector& effector : effectors_) {
        const Object& object = *joints_[effector.joint].object;
        const double length = usesMotion && effector.lengthIsDriven
                                  ? DistanceAlong(globals[effector.bone], globals[effector.object])
                                  : headless::EndOfChain(object)->length;
        locals[effector.joint] = headless::EffectorSeenFromEnd(object, length);
    }
    if (scale_ == 1.0) return;
    for (Transform& local : locals)
        Scale(local, scale_);
}

void SkeletonPoses::GlobalsOf(const headless::MotionEvaluator& evaluator, double frame,
                              std::span<Transform> globals) {
    std::vector<Transform>& objects = scratch_.objects;
    objects.resize(base_.Objects().size());
    evaluator.Evaluate(frame, objects);
    for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
        globals[joint] = objects[objectOf_[joint]];
        if (scale_ != 1.0) Scale(globals[joint], scale_);
    }
}

void SkeletonPoses::Locals(double frame, std::span<Transform> locals) {
    LocalsOf(motion_, frame, true, locals, scratch_);
}
void SkeletonPoses::Locals(double frame, std::span<Transform> locals, Scratch& scratch) const {
    LocalsOf(motion_, frame, true, locals, scratch);
}
void SkeletonPoses::BaseLocals(std::span<Transform> locals) {
    LocalsOf(base_, 0.0, false, locals, scratch_);
}
void SkeletonPoses::Globals(double frame, std::span<Transform> globals) {
    GlobalsOf(motion_, frame, globals);
}
void SkeletonPoses::BaseGlobals(std::span<Transform> globals) {
    GlobalsOf(base_, 0.0, globals);
}

double SkeletonSize(SkeletonPoses& poses, const std::vector<double>& frames) {
    std::vector<Transform> globals(poses.Joints().size());
    poses.BaseGlobals(globals);
    double size = SizeOf(globals);
    if (!frames.empty()) {
        poses.Globals(frames.front(), globals);
        size = std::max(size, SizeOf(globals));
    }
    return size;
}

}  // namespace exporters
