// Evaluates a model and one of its motions as the options ask for. Scale, up axis, rate, resampling
// and frame range are applied here alone; the formats do not read these options.
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
    // Holds the base pose alone. Throws ExportError if a value of the base pose is not finite.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const Options& options);
    // `motion` may be null. If it is null or has no keys or no rate, this holds the base pose
    // alone, and a note says so. Throws ExportError if a value is not finite, and what MakeTimeline
    // throws.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const headless::ActionSource* motion, const Options& options, Notes& notes);

    // Null if this holds the base pose alone.
    const headless::ActionSource* Motion() const { return motion_; }
    const Timeline& Times() const { return times_; }
    // Makes the steps between the frames equal (see EvenTimeline).
    void SpaceEvenly() { times_ = EvenTimeline(std::move(times_)); }
    // Moves the timeline to the caller, for a table whose models share one timeline.
    Timeline ReleaseTimes() { return std::move(times_); }

    const std::vector<Joint>& Joints() const { return poses_.Joints(); }
    // The rotation that is applied to the scaled scene to make Y the up axis; none if Y is up
    // already.
    const std::optional<headless::Transform>& Turn() const { return turn_; }

    // The scaled local transform of each joint. For a joint without a parent it is the transform
    // seen from the scene, without Turn(): the format turns a node above it or calls TurnTopJoints.
    void BaseLocals(std::span<headless::Transform> locals) { poses_.BaseLocals(locals); }
    void Locals(double frame, std::span<headless::Transform> locals) {
        poses_.Locals(frame, locals);
    }
    // The same, for several threads at once. Each thread has its own scratch memory.
    using Scratch = SkeletonPoses::Scratch;
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const {
        poses_.Locals(frame, locals, scratch);
    }
    // Applies Turn() to the joints without a parent.
    void TurnTopJoints(std::span<headless::Transform> locals) const;
    // The scaled and turned global transform of each joint.
    void BaseGlobals(std::span<headless::Transform> globals);
    void Globals(double frame, std::span<headless::Transform> globals);

    // The diagonal, in scaled units, of the box around all joints: that of the base pose or that of
    // the first frame of `times`, whichever is larger. 0 if all joints are at one point or a box is
    // not finite. `times` is Times() or the timeline of a table.
    double Size(const Timeline& times);

  private:
    void TurnAll(std::span<headless::Transform> globals) const;

    const headless::ActionSource* motion_ = nullptr;
    Timeline times_;
    SkeletonPoses poses_;
    std::optional<headless::Transform> turn_;
};

// The first `options.models` models of the scene, or all. Throws ExportError if there is none.
std::vector<const headless::Object*> ExportedModels(const headless::Scene& scene,
                                                    const Options& options);

}  // namespace exporters
