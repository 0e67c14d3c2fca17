#include "export/clean_skeleton.h"

#include <algorithm>
#include <cmath>

#include "export/file_match.h"
#include "export/object_names.h"
#include "export/skeleton_size.h"
#include "headless/text.h"

namespace exporters {
namespace {

using headless::ObjectType;
using headless::Transform;

// Two positions are the same if their distance is at most this fraction of the skeleton's size.
constexpr double kSamePosition = 1e-6;

std::wstring NameOf(const headless::Object& object) {
    return std::wstring(headless::View(object.name));
}

// Decides which nodes are joints.
class JointChooser {
  public:
    JointChooser(const SceneNodes& nodes, std::span<const Transform> rest,
                 const headless::Object& model)
        : all_(nodes),
          nodes_(nodes.Nodes()),
          rest_(rest),
          model_(model),
          children_(nodes_.size()),
          tolerance_(kSamePosition * BoxDiagonal(rest)) {
        for (std::size_t node = 0; node < nodes_.size(); ++node)
            if (nodes_[node].parent != SceneNode::kNoParent)
                children_[nodes_[node].parent].push_back(node);
    }

    std::vector<Joint> Choose() {
        std::vector<std::size_t> jointOf(nodes_.size(), Joint::kNoParent);
        std::vector<Joint> joints;
        for (std::size_t node = 0; node < nodes_.size(); ++node) {
            const std::size_t above = nodes_[node].parent;
            const std::size_t parent =
                above == SceneNode::kNoParent ? Joint::kNoParent : jointOf[above];
            const std::size_t parentNode = parent == Joint::kNoParent ? kNone : joints[parent].node;
            if (IsHelper(node, parentNode)) {
                jointOf[node] = parent;
                continue;
            }
            jointOf[node] = joints.size();
            if (parent != Joint::kNoParent) joints[parent].isLeaf = false;
            Joint joint;
            joint.object = nodes_[node].object;
            joint.parent = parent;
            joint.node = node;
            joint.name = joint.sourceName = NameOf(*joint.object);
            joints.push_back(std::move(joint));
        }
        NameEnds(joints);
        return joints;
    }

  private:
    static constexpr std::size_t kNone = SceneNode::kNoParent;

    // `parentNode` is the node of the nearest joint above the node, or kNone.
    bool IsHelper(std::size_t node, std::size_t parentNode) const {
        if (all_.IsDriven(node)) return false;
        switch (nodes_[node].object->type) {
            case ObjectType::ChainRoot:
                return IsAtFirstBone(node) || IsAt(node, parentNode);
            case ObjectType::ChainBone:
                return IsLeadIn(node, parentNode) && IsAt(node, parentNode);
            case ObjectType::ChainEffector:
                return std::any_of(
                    children_[node].begin(), children_[node].end(), [&](std::size_t child) {
                        return nodes_[child].object->type == ObjectType::Null && IsAt(child, node);
                    });
            default:
                return false;
        }
    }

    bool IsAtFirstBone(std::size_t root) const {
        return std::any_of(children_[root].begin(), children_[root].end(), [&](std::size_t child) {
            return nodes_[child].object->type == ObjectType::ChainBone && IsAt(child, root);
        });
    }

    // Whether the bone is the first of its chain and only leads from the parent joint to the second
    // bone. The importers name such a bone after the parent joint's object.
    bool IsLeadIn(std::size_t node, std::size_t parentNode) const {
        const headless::Object& bone = *nodes_[node].object;
        if (bone.parent == nullptr || bone.parent->type != ObjectType::ChainRoot) return false;
        const headless::Object& parent = parentNode == kNone ? model_ : *nodes_[parentNode].object;
        return IsNumbered(headless::View(bone.name), headless::View(parent.name));
    }

    // Whether the node has the position of `other` at rest. If `other` is kNone, there is no joint
    // to compare with, and the result is true.
    bool IsAt(std::size_t node, std::size_t other) const {
        if (other == kNone) return true;
        const double* const a = rest_[node].origin;
        const double* const b = rest_[other].origin;
        return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]) <= tolerance_;
    }

    // Marks the end sites. An end site does not turn, but it moves if the length of its bone
    // changes. An effector that is a joint is the end of its chain, and is named as the
    // importers name an end site in a scene of nulls.
    void NameEnds(std::vector<Joint>& joints) const {
        NameSet names;
        names.Add(NameOf(model_));
        for (const Joint& joint : joints)
            names.Add(joint.name);
        for (Joint& joint : joints) {
            if (!joint.isLeaf || joint.parent == Joint::kNoParent || all_.IsRotated(joint.node))
                continue;
            const Joint& parent = joints[joint.parent];
            if (joint.object->type == ObjectType::Null) {
                joint.isEndSite = IsEndName(joint.name, parent.name);
            } else if (joint.object->type == ObjectType::ChainEffector) {
                joint.isEndSite = true;
                joint.sourceName = parent.sourceName + std::wstring(kEndSuffix);
                joint.name = names.Add(parent.name + std::wstring(kEndSuffix));
            }
        }
    }

    const SceneNodes& all_;
    const std::vector<SceneNode>& nodes_;
    std::span<const Transform> rest_;
    const headless::Object& model_;
    std::vector<std::vector<std::size_t>> children_;
    double tolerance_;
};

}  // namespace

std::vector<Joint> AllJoints(const SceneNodes& nodes) {
    std::vector<Joint> joints;
    for (std::size_t node = 0; node < nodes.Nodes().size(); ++node) {
        const SceneNode& from = nodes.Nodes()[node];
        Joint joint;
        joint.object = from.object;
        joint.parent = from.parent;
        joint.node = node;
        joint.name = joint.sourceName = NameOf(*from.object);
        if (joint.parent != Joint::kNoParent) joints[joint.parent].isLeaf = false;
        joints.push_back(std::move(joint));
    }
    return joints;
}

std::vector<Joint> CleanJoints(const SceneNodes& nodes, std::span<const Transform> rest,
                               const headless::Object& model, const FileSkeleton* file) {
    std::vector<Joint> joints = JointChooser(nodes, rest, model).Choose();
    if (file) MatchFile(*file, headless::View(model.name), joints);
    return joints;
}

}  // namespace exporters
