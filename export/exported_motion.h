// Evaluates a model and one of its motions as the options say. Only ExportedMotion applies the
// options for scale, up axis, rate, resampling and frame range.
// Internal to export/.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "export/options.h"
#include "export/skeleton_poses.h"
#include "export/timeline.h"
#include "headless/scene.h"
#include "headless/transform.h"

namespace exporters {

// Keeps references to the scene, but not to the options.
class ExportedMotion {
  public:
    // Evaluates only the base pose of the model. Throws ExportError if a value of the base pose is
    // not finite.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const Options& options);
    // Evaluates `motion`, which may be null. If it is null or has no keys or no rate, only the base
    // pose is evaluated, and a note is added to `notes`. Throws ExportError if a value is not
    // finite, and what MakeTimeline throws.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const headless::ActionSource* motion, const Options& options, Notes& notes);

    // Null if only the base pose is evaluated.
    const headless::ActionSource* Motion() const { return motion_; }
    const Timeline& Times() const { return times_; }
    // Makes the steps between the frames equal (see EvenTimeline).
    void SpaceEvenly() { times_ = EvenTimeline(std::move(times_)); }
    // Moves the timeline to the caller, for a table whose models share one timeline.
    Timeline ReleaseTimes() { return std::move(times_); }

    const std::vector<Joint>& Joints() const { return poses_.Joints(); }
    // The rotation that is applied to the scaled scene to make Y the up axis. Empty if Y is already
    // the up axis.
    const std::optional<headless::Transform>& Turn() const { return turn_; }

    // The scaled local transform of each joint. The transform of a joint without a parent is as
    // seen from the scene, and Turn() is not applied to it. To apply Turn(), the writer of a format
    // turns a node above these joints, or it calls TurnTopJoints.
    void BaseLocals(std::span<headless::Transform> locals) { poses_.BaseLocals(locals); }
    void Locals(double frame, std::span<headless::Transform> locals) {
        poses_.Locals(frame, locals);
    }
    // Does the same, and several threads may call it at the same time. Each thread passes a Scratch
    // of its own.
    using Scratch = SkeletonPoses::Scratch;
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const {
        poses_.Locals(frame, locals, scratch);
    }
    // Applies Turn() to the joints without a parent.
    void TurnTopJoints(std::span<headless::Transform> locals) const;
    // The scaled and turned global transform of each joint.
    void BaseGlobals(std::span<headless::Transform> globals);
    void Globals(double frame, std::span<headless::Transform> globals);

    // Computes the box around all joints in the base pose, and the box in the first frame of
    // `times`. Returns the longer of the diagonals of the two boxes, in scaled units. A diagonal
    // that is not finite counts as 0. `times` is Times() or the timeline of a table.
    double Size(const Timeline& times);

  private:
    void TurnAll(std::span<headless::Transform> globals) const;

    const headless::ActionSource* motion_ = nullptr;
    Timeline times_;
    SkeletonPoses poses_;
    std::optional<headless::Transform> turn_;
};

// Returns the first `options.models` models of the scene, or all if that option is not set. Throws
// ExportError if there is no model to return.
std::vector<const headless::Object*> ExportedModels(const headless::Scene& scene,
                                                    const Options& options);

}  // namespace exporters
