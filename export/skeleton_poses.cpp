#include "export/skeleton_poses.h"

#include <algorithm>
#include <utility>

namespace exporters {

using headless::Object;
using headless::Transform;

namespace {

constexpr Transform kUnturned;

}  // namespace

SkeletonPoses::SkeletonPoses(const headless::Scene& scene, const Object& model, std::size_t index,
                             const headless::ActionSource* motion, const Options& options)
    : nodes_(scene, model, motion),
      scale_(options.scale / options.enlarged),
      allNodes_(options.allNodes) {
    ChooseJoints(model, index, options);
    FindPaths();
}

void SkeletonPoses::ChooseJoints(const Object& model, std::size_t index, const Options& options) {
    const std::vector<SceneNode>& nodes = nodes_.Nodes();
    std::vector<Transform> rest(nodes.size());
    SceneNodes::Scratch scratch;
    nodes_.BaseLocals(rest, scratch);
    for (std::size_t node = 0; node < nodes.size(); ++node)
        if (nodes[node].parent != SceneNode::kNoParent)
            rest[node] = rest[node] * rest[nodes[node].parent];
    const bool isKnown = index < options.skeletons.size();
    joints_ = CleanJoints(nodes_, rest, model, isKnown ? &options.skeletons[index] : nullptr);
    if (!options.allNodes) return;
    const std::vector<Joint> clean = std::move(joints_);
    joints_ = AllJoints(nodes_);
    for (const Joint& joint : clean)
        joints_[joint.node].isEndSite = joint.isEndSite;
}

void SkeletonPoses::FindPaths() {
    const std::vector<SceneNode>& nodes = nodes_.Nodes();
    for (const Joint& joint : joints_) {
        const std::size_t end =
            joint.parent == Joint::kNoParent ? SceneNode::kNoParent : joints_[joint.parent].node;
        for (std::size_t node = nodes[joint.node].parent; node != end; node = nodes[node].parent)
            paths_.push_back(node);
        pathEnds_.push_back(paths_.size());
    }
}

bool SkeletonPoses::IsItsObject(std::size_t joint) const {
    const std::size_t begin = joint == 0 ? 0 : pathEnds_[joint - 1];
    if (begin != pathEnds_[joint]) return false;
    if (joints_[joint].object->type != headless::ObjectType::Null) return false;
    return joints_[joint].parent != Joint::kNoParent || !nodes_.ModelMoves();
}

void SkeletonPoses::Fold(std::span<const Transform> nodes, std::span<Transform> locals) const {
    std::size_t step = 0;
    for (std::size_t joint = 0; joint < joints_.size(); ++joint) {
        Transform& local = locals[joint];
        local = nodes[joints_[joint].node];
        for (; step < pathEnds_[joint]; ++step)
            local = local * nodes[paths_[step]];
        if (!allNodes_ && joints_[joint].object->type == headless::ObjectType::ChainEffector)
            std::copy_n(&kUnturned.axes[0][0], 9, &local.axes[0][0]);
        if (scale_ == 1.0) continue;
        for (double& coordinate : local.origin)
            coordinate *= scale_;
    }
}

void SkeletonPoses::Locals(double frame, std::span<Transform> locals, Scratch& scratch) const {
    scratch.nodes.resize(nodes_.Nodes().size());
    nodes_.Locals(frame, scratch.nodes, scratch.objects);
    Fold(scratch.nodes, locals);
}

void SkeletonPoses::BaseLocals(std::span<Transform> locals, Scratch& scratch) const {
    scratch.nodes.resize(nodes_.Nodes().size());
    nodes_.BaseLocals(scratch.nodes, scratch.objects);
    Fold(scratch.nodes, locals);
}

void ComputeGlobals(const std::vector<Joint>& joints, std::span<const Transform> locals,
                    std::span<Transform> globals) {
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        const std::size_t parent = joints[joint].parent;
        globals[joint] =
            parent == Joint::kNoParent ? locals[joint] : locals[joint] * globals[parent];
    }
}

}  // namespace exporters
