// The objects under a model as a tree of nodes, and their local transforms in any frame.
// Internal to export/.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "headless/evaluation.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

struct SceneNode {
    static constexpr std::size_t kNoParent = std::numeric_limits<std::size_t>::max();

    const headless::Object* object = nullptr;
    std::size_t parent = kNoParent;  // index of the parent node; kNoParent if there is none
    std::size_t index = 0;           // index of the object among the evaluator's objects
};

// The nodes are in depth-first order, so each parent comes before its children. An effector becomes
// the child of its chain's last bone, even if it has another parent in the scene. The effector
// therefore moves with the bone and needs no curves. If an effector is an ancestor of its own
// chain, all effectors keep their parents. The class keeps references to the scene.
class SceneNodes {
  public:
    // If `motion` is null, every frame is the base pose.
    SceneNodes(const headless::Scene& scene, const headless::Object& model,
               const headless::ActionSource* motion);

    const std::vector<SceneNode>& Nodes() const { return nodes_; }
    // Whether an active item of one of the model's motions is meant for the node's object. This
    // does not depend on the motion that was passed to the constructor.
    bool IsDriven(std::size_t node) const { return isDriven_[node]; }
    // The same for items that rotate the object.
    bool IsRotated(std::size_t node) const { return isRotated_[node]; }

    // Whether the model itself has a transform or is driven by a motion.
    bool ModelMoves() const { return modelMoves_; }

    struct Scratch {
        std::vector<headless::Transform> objects;
        std::vector<headless::Transform> globals;
    };
    // Computes one transform for each node, as seen from its parent node. The transform of a node
    // without a parent is as seen from the scene. Several threads may call these functions at the
    // same time, each with a Scratch of its own.
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    void BaseLocals(std::span<headless::Transform> locals, Scratch& scratch) const;

  private:
    // An effector that is the child of its chain's last bone. If the motion does not drive the
    // length of that bone, the effector's local transform is computed from the length at rest. It
    // is not computed from global transforms, because their rounding errors differ between frames.
    struct Effector {
        std::size_t node;     // index in nodes_
        std::size_t object;   // index of the effector among the evaluator's objects
        std::size_t bone;     // index of the last bone among the evaluator's objects
        bool lengthIsDriven;  // whether the motion drives the length of that bone
    };

    // If `moveEffectors` is set, effectors become children of the last bones of their chains.
    void CollectNodes(bool moveEffectors);
    void CollectEffectors(const headless::Scene& scene, const headless::Object& model,
                          const headless::ActionSource* motion);
    void MarkDriven(const headless::Scene& scene, const headless::Object& model);
    // `usesMotion` is true if `evaluator` is motion_. Only a motion can change the lengths of
    // bones.
    void LocalsOf(const headless::MotionEvaluator& evaluator, double frame, bool usesMotion,
                  std::span<headless::Transform> locals, Scratch& scratch) const;

    headless::MotionEvaluator base_;
    headless::MotionEvaluator motion_;
    std::vector<SceneNode> nodes_;
    std::vector<bool> isDriven_;   // for each node
    std::vector<bool> isRotated_;  // for each node
    std::vector<Effector> effectors_;
    bool modelMoves_ = false;
    bool needsGlobals_ = false;  // whether the motion drives the length of an effector's bone
};

}  // namespace exporters
