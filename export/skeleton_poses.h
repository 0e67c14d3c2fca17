// A model as files have it: joints in one tree, and their transforms at any time.
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
    std::size_t parent = kNoParent;  // index among the joints; none directly under the model
    bool isLeaf = true;
};

// Everything below a model, depth first: each parent before its children, as files nest them. An
// effector is the child of its chain's last bone, whatever its parent in the scene is, so that it
// moves with the bone without curves of its own. Keeps references to the scene.
class SkeletonPoses {
  public:
    // `motion` may be null: then every frame is the base pose. Lengths are multiplied by `scale`.
    SkeletonPoses(const headless::Scene& scene, const headless::Object& model,
                  const headless::ActionSource* motion, double scale);

    const std::vector<Joint>& Joints() const { return joints_; }

    // Seen from the parent joint, from the scene where there is none. One for each joint.
    void Locals(double frame, std::span<headless::Transform> locals);
    // The same for several threads at once, each with a scratch of its own.
    struct Scratch {
        std::vector<headless::Transform> objects;
        std::vector<headless::Transform> globals;
    };
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    void BaseLocals(std::span<headless::Transform> locals);
    // Seen from the scene.
    void Globals(double frame, std::span<headless::Transform> globals);
    void BaseGlobals(std::span<headless::Transform> globals);

  private:
    // An effector as the child of its last bone. Its transform there is known without transforms
    // seen from the scene, so that one that does not move is the same to the last bit in each
    // frame.
    struct Effector {
        std::size_t joint;
        std::size_t object;  // index among the evaluator's objects
        std::size_t bone;    // the same of the last bone
        bool lengthIsDriven;
    };

    void GatherJoints(bool moveEffectors);
    void FindEffectors(const headless::Scene& scene, const headless::Object& model,
                       const headless::ActionSource* motion);
    void LocalsOf(const headless::MotionEvaluator& evaluator, double frame, bool moves,
                  std::span<headless::Transform> locals, Scratch& scratch) const;
    void GlobalsOf(const headless::MotionEvaluator& evaluator, double frame,
                   std::span<headless::Transform> globals);

    headless::MotionEvaluator base_;
    headless::MotionEvaluator motion_;
    double scale_;
    std::vector<Joint> joints_;
    std::vector<std::size_t> objectOf_;  // index among the evaluator's objects, for each joint
    std::vector<Effector> effectors_;
    bool needsGlobals_ = false;  // some effector's transform follows from global ones
    Scratch scratch_;
};

// The corner-to-corner size of the box around all joints, in the base pose and in the first frame
// of the motion, whichever is larger; 0 where all are at one point.
double SkeletonSize(SkeletonPoses& poses, const std::vector<double>& frames);

}  // namespace exporters
