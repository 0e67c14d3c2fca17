// Evaluates a model as files store it: a list of joints and their transforms in any frame.
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

struct Joint {
    static constexpr std::size_t kNoParent = std::numeric_limits<std::size_t>::max();

    const headless::Object* object = nullptr;
    std::size_t parent = kNoParent;  // index of the parent joint; kNoParent if there is none
    bool isLeaf = true;              // whether the joint has no children
};

// The joints are all objects under a model. They are in depth-first order, so each parent comes
// before its children. An effector becomes the child of its chain's last bone, even if it has
// another parent in the scene. The effector therefore moves with the bone and needs no curves. If
// an effector is an ancestor of its own chain, all effectors keep their parents. The class keeps
// references to the scene.
class SkeletonPoses {
  public:
    // If `motion` is null, every frame is the base pose. Lengths are multiplied by `scale`.
    SkeletonPoses(const headless::Scene& scene, const headless::Object& model,
                  const headless::ActionSource* motion, double scale);

    const std::vector<Joint>& Joints() const { return joints_; }

    // Computes one transform for each joint, as seen from its parent joint. The transform of a
    // joint without a parent is as seen from the scene. `locals` has one element for each joint.
    void Locals(double frame, std::span<headless::Transform> locals);
    // Does the same, and several threads may call it at the same time. Each thread passes a Scratch
    // of its own.
    struct Scratch {
        std::vector<headless::Transform> objects;
        std::vector<headless::Transform> globals;
    };
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    void BaseLocals(std::span<headless::Transform> locals);
    // Computes one transform for each joint, as seen from the scene.
    void Globals(double frame, std::span<headless::Transform> globals);
    void BaseGlobals(std::span<headless::Transform> globals);

  private:
    // An effector that is the child of its chain's last bone. If the motion does not drive the
    // length of that bone, the effector's local transform is computed from the length at rest. It
    // is not computed from global transforms, because their rounding errors differ between frames.
    struct Effector {
        std::size_t joint;    // index in joints_
        std::size_t object;   // index of the effector among the evaluator's objects
        std::size_t bone;     // index of the last bone among the evaluator's objects
        bool lengthIsDriven;  // whether the motion drives the length of that bone
    };

    // If `moveEffectors` is set, effectors become children of the last bones of their chains.
    void CollectJoints(bool moveEffectors);
    void CollectEffectors(const headless::Scene& scene, const headless::Object& model,
                          const headless::ActionSource* motion);
    // `usesMotion` is true if `evaluator` is motion_. Only a motion can change the lengths of
    // bones.
    void LocalsOf(const headless::MotionEvaluator& evaluator, double frame, bool usesMotion,
                  std::span<headless::Transform> locals, Scratch& scratch) const;
    void GlobalsOf(const headless::MotionEvaluator& evaluator, double frame,
                   std::span<headless::Transform> globals);

    headless::MotionEvaluator base_;
    headless::MotionEvaluator motion_;
    double scale_;
    std::vector<Joint> joints_;
    std::vector<std::size_t> objectOf_;  // for each joint, its index in base_.Objects()
    std::vector<Effector> effectors_;
    bool needsGlobals_ = false;  // whether the motion drives the length of an effector's bone
    Scratch scratch_;
};

// Computes the box around all joints in the base pose, and the box in the first of `frames`.
// Returns the longer of the diagonals of the two boxes, in scaled units. A diagonal that is not
// finite counts as 0.
double SkeletonSize(SkeletonPoses& poses, const std::vector<double>& frames);

}  // namespace exporters
