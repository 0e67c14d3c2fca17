// Evaluates a model as files store it: as one tree of joints with their transforms in any frame.
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
    std::size_t parent = kNoParent;  // index of a joint; kNoParent if directly under the model
    bool isLeaf = true;
};

// The joints are all objects below a model, depth first: each parent comes before its children, as
// files nest them. An effector becomes the child of its chain's last bone, whatever its parent in
// the scene is, so that it moves with the bone and needs no curves. Keeps references to the scene.
class SkeletonPoses {
  public:
    // `motion` may be null; then every frame is the base pose. Lengths are multiplied by `scale`.
    SkeletonPoses(const headless::Scene& scene, const headless::Object& model,
                  const headless::ActionSource* motion, double scale);

    const std::vector<Joint>& Joints() const { return joints_; }

    // One transform for each joint, as seen from its parent joint or, without one, from the scene.
    void Locals(double frame, std::span<headless::Transform> locals);
    // The same, for several threads at once. Each thread has its own scratch memory.
    struct Scratch {
        std::vector<headless::Transform> objects;
        std::vector<headless::Transform> globals;
    };
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    void BaseLocals(std::span<headless::Transform> locals);
    // One transform for each joint, as seen from the scene.
    void Globals(double frame, std::span<headless::Transform> globals);
    void BaseGlobals(std::span<headless::Transform> globals);

  private:
    // An effector that is the child of its chain's last bone. If the motion does not drive the
    // length of that bone, the local transform follows from the length at rest. Global transforms
    // are not used for it, because their rounding errors would differ from frame to frame.
    struct Effector {
        std::size_t joint;
        std::size_t object;  // index of the effector among the evaluator's objects
        std::size_t bone;    // index of the last bone among the evaluator's objects
        bool lengthIsDriven;
    };

    // With `moveEffectors`, effectors become children of the last bones of their chains.
    void CollectJoints(bool moveEffectors);
    void CollectEffectors(const headless::Scene& scene, const headless::Object& model,
                          const headless::ActionSource* motion);
    // `usesMotion` tells whether `evaluator` is motion_, so that bones may change their lengths.
    void LocalsOf(const headless::MotionEvaluator& evaluator, double frame, bool usesMotion,
                  std::span<headless::Transform> locals, Scratch& scratch) const;
    void GlobalsOf(const headless::MotionEvaluator& evaluator, double frame,
                   std::span<headless::Transform> globals);

    headless::MotionEvaluator base_;
    headless::MotionEvaluator motion_;
    double scale_;
    std::vector<Joint> joints_;
    std::vector<std::size_t> objectOf_;  // for each joint, its index among the evaluator's objects
    std::vector<Effector> effectors_;
    bool needsGlobals_ = false;  // whether the motion drives the length of an effector's bone
    Scratch scratch_;
};

// The diagonal of the box around all joints: that of the base pose or that of the first of
// `frames`, whichever is larger. 0 if all joints are at one point or a box is not finite.
double SkeletonSize(SkeletonPoses& poses, const std::vector<double>& frames);

}  // namespace exporters
