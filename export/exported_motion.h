// Evaluates a model and one of its motions as the options say. Only ExportedMotion applies the
// options for scale, up axis, rate, resampling, frame range and in-place motion.
// Internal to export/.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "export/options.h"
#include "export/skeleton_poses.h"
#include "export/timeline.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

// A model of a scene.
struct ExportedModel {
    const headless::Object* object = nullptr;
    std::size_t index = 0;  // its index among the scene's models
};

// Keeps references to the scene, but not to the options.
class ExportedMotion {
  public:
    // Evaluates only the base pose of the model. Throws ExportError if a value of the base pose is
    // not finite.
    ExportedMotion(const headless::Scene& scene, const ExportedModel& model,
                   const Options& options);
    // Evaluates `motion`, which may be null. If it is null or has no keys or no rate, only the base
    // pose is evaluated, and a note is added to `notes`. `even` is passed to MakeTimeline. Throws
    // ExportError if a value is not finite, and what MakeTimeline throws.
    ExportedMotion(const headless::Scene& scene, const ExportedModel& model,
                   const headless::ActionSource* motion, const Options& options, bool even,
                   Notes& notes);

    // Null if only the base pose is evaluated.
    const headless::ActionSource* Motion() const { return motion_; }
    const Timeline& Times() const { return times_; }
    const std::vector<Joint>& Joints() const { return poses_.Joints(); }
    // Whether the joint's local transform is that of its object in every frame with keys, apart
    // from the scale of lengths. TurnTopJoints may change it afterwards.
    bool IsItsObject(std::size_t joint) const;
    // The factor on all lengths of the scene.
    double Scale() const { return poses_.Scale(); }
    // The rotation that is applied to the scaled scene to make Y the up axis. Empty if Y is already
    // the up axis.
    const std::optional<headless::Transform>& Turn() const { return turn_; }

    // The scaled local transform of each joint. The transform of a joint without a parent is as
    // seen from the scene, and Turn() is not applied to it. To apply Turn(), the writer of a format
    // turns a node above these joints, or it calls TurnTopJoints.
    void BaseLocals(std::span<headless::Transform> locals) const;
    // Memory that a thread uses again for each frame. It also holds the poses at two keys, so
    // frames between keys should be evaluated in their order.
    struct Scratch {
        SkeletonPoses::Scratch poses;
        std::size_t key = 0;
        std::vector<headless::Transform> atKey;   // the pose at keys_[key]; empty at first
        std::vector<headless::Transform> atNext;  // the pose at keys_[key + 1]
    };
    // Computes the pose at a frame. Between two frames with keys, positions are interpolated along
    // a straight line and rotations the short way, whatever the objects of the scene are. Before
    // the first key the pose is that of the first key; after the last key, that of the last key.
    // Several threads may call this at the same time, each with a Scratch of its own.
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const;
    // Applies Turn() to the joints without a parent.
    void TurnTopJoints(std::span<headless::Transform> locals) const;

    // The frames with keys, strictly rising. Empty if only the base pose is evaluated.
    const std::vector<double>& Keys() const { return keys_; }

    // Computes the box around all joints in the base pose, and the box in the first frame of
    // `times`. Returns the longer of the diagonals of the two boxes, in scaled units. A diagonal
    // that is not finite counts as 0. `times` is Times() or the timeline of a table.
    double Size(const Timeline& times) const;

  private:
    // Computes the pose between keys_[key] and keys_[key + 1].
    void Sample(double frame, std::size_t key, std::span<headless::Transform> locals,
                Scratch& scratch) const;
    void HoldRoot(std::span<headless::Transform> locals) const;

    const headless::ActionSource* motion_ = nullptr;
    Timeline times_;
    std::vector<double> keys_;  // the frames with keys, strictly rising
    SkeletonPoses poses_;
    std::optional<headless::Transform> turn_;
    // The root's position in the first frame. Empty unless the root stays in place.
    std::optional<std::array<double, 3>> heldRoot_;
    std::size_t upAxis_ = 1;  // 0, 1 or 2 for x, y or z in the scene
};

// Returns the first `options.models` models of the scene, or all if that option is not set. Throws
// ExportError if there is no model to return.
std::vector<ExportedModel> ExportedModels(const headless::Scene& scene, const Options& options);

}  // namespace exporters
