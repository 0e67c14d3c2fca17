// A model and a motion of it as the options ask for them. The one place where scale, up axis, rate,
// resampling and frame range are applied: formats read none of these options themselves.
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

// Keeps references to the scene, but none to the options.
class ExportedMotion {
  public:
    // The base pose. Throws ExportError where a value of it is not finite.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const Options& options);
    // `motion` may be null. Without keys or without a rate only the base pose is left, and a note
    // says so. Throws ExportError where a value is not finite and where the times make no sense.
    ExportedMotion(const headless::Scene& scene, const headless::Object& model,
                   const headless::ActionSource* motion, const Options& options, Notes& notes);

    // Null where only the base pose is left.
    const headless::ActionSource* Motion() const { return motion_; }
    const Timeline& Times() const { return times_; }
    // Puts one step between all frames (see EvenTimeline).
    void SpaceEvenly() { times_ = EvenTimeline(std::move(times_)); }
    // Moves the timeline out, for a table whose models share one.
    Timeline ReleaseTimes() { return std::move(times_); }

    const std::vector<Joint>& Joints() const { return poses_.Joints(); }
    // What turns the scene, once it is scaled, so that Y is up; none where Y is up already.
    const std::optional<headless::Transform>& Turn() const { return turn_; }

    // Scaled, one for each joint, seen from the parent joint; a joint without one is seen from the
    // scene before its turn, for formats that turn a node above it or leave this to TurnTops.
    void BaseLocals(std::span<headless::Transform> locals) { poses_.BaseLocals(locals); }
    void Locals(double frame, std::span<headless::Transform> locals) {
        poses_.Locals(frame, locals);
    }
    // The same for several threads at once, each with a scratch of its own.
    using Scratch = SkeletonPoses::Scratch;
    void Locals(double frame, std::span<headless::Transform> locals, Scratch& scratch) const {
        poses_.Locals(frame, locals, scratch);
    }
    // Turns the joints without a parent.
    void TurnTops(std::span<headless::Transform> locals) const;
    // Scaled and turned, one for each joint, seen from the scene.
    void BaseGlobals(std::span<headless::Transform> globals);
    void Globals(double frame, std::span<headless::Transform> globals);

    // The diagonal of the box around all joints, scaled, in the base pose and in the first frame of
    // `times`, whichever is larger; 0 where all are at one point. `times` is Times(), or that of a
    // table.
    double Size(const Timeline& times);

  private:
    void TurnAll(std::span<headless::Transform> globals) const;

    const headless::ActionSource* motion_ = nullptr;
    Timeline times_;
    SkeletonPoses poses_;
    std::optional<headless::Transform> turn_;
};

// The first `options.models` models. Throws ExportError where there is none.
std::vector<const headless::Object*> ExportedModels(const headless::Scene& scene,
                                                    const Options& options);

}  // namespace exporters
