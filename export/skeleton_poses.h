// Evaluates a model as files store it: a list of joints and their transforms in any frame.
// Internal to export/.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "export/clean_skeleton.h"
#include "export/options.h"
#include "export/scene_nodes.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

// The joints are in depth-first order, so each parent comes before its children. A joint that is an
// effector, at the end of a chain, is not rotated against its parent joint, unless all nodes are
// wanted: the host gives an effector the orientation of its chain's root, which means nothing for
// the figure, and in a scene of nulls an end site is not rotated either. The class keeps references
// to the scene, but not to the options.
class SkeletonPoses {
  public:
    // `index` is the index of the model in the scene. If `motion` is null, every frame is the base
    // pose. Of the options, `allNodes` and `skeletons` choose the joints, and lengths are
    // multiplied by `scale`.
    SkeletonPoses(const headless::Scene& scene, const headless::Object& model, std::size_t index,
                  const headless::ActionSource* motion, const Options& options);

    const std::vector<Joint>& Joints() const { return joints_; }

    // Whether the joint's local transform is that of its object in every frame, apart from the
    // scale of lengths: the object is a null, its parent is the object of the parent joint, and a
    // top joint is under a model that does not move.
    bool IsItsObject(std::size_t joint) const;
    // The factor on all lengths of the scene.
    double Scale() const { return scale_; }

    struct Scratch {
        SceneNodes::Scratch objects;
        std::vector<headless::Transform> nodes;
    };
    // Computes one transform for each joint, as seen from its parent joint. The transform of a
    // joint without a parent is as seen from the scene. `locals` has one element for each joint.
    // Several threads may call these functions at the same time, each with a Scratch of its own.
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    void BaseLocals(std::span<headless::Transform> locals, Scratch& scratch) const;

  private:
    void ChooseJoints(const headless::Object& model, std::size_t index, const Options& options);
    void FindPaths();
    // Computes the locals of the joints from those of the nodes.
    void Fold(std::span<const headless::Transform> nodes,
              std::span<headless::Transform> locals) const;

    SceneNodes nodes_;
    double scale_;
    bool allNodes_;
    std::vector<Joint> joints_;
    // For each joint, the nodes above it that are not joints, up to its parent joint. They are in
    // paths_[pathEnds_[joint - 1]] to paths_[pathEnds_[joint] - 1], the lowest one first.
    std::vector<std::size_t> paths_;
    std::vector<std::size_t> pathEnds_;
};

// Computes the global transform of each joint from the local ones.
void ComputeGlobals(const std::vector<Joint>& joints, std::span<const headless::Transform> locals,
                    std::span<headless::Transform> globals);

}  // namespace exporters
