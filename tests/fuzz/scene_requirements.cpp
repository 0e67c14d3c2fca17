#include "tests/fuzz/scene_requirements.h"

#include <algorithm>
#include <cmath>

#include "headless/session.h"
#include "host/status.h"
#include "tests/fuzz/require.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"
#include "tests/support/math.h"

namespace fuzz {
namespace {

constexpr std::size_t kMostFrames = 4;
constexpr std::size_t kMostJoints = 200;
// Larger or smaller numbers leave too few digits for a comparison.
constexpr double kLargest = 1e6;
constexpr double kSmallest = 1e-3;
// Tolerances as a fraction of the size. Near gimbal lock the decomposition rounds a cosine below
// 1e-5 to 0.
constexpr double kTolerance = 1e-6;
constexpr double kToleranceNearRightAngle = 3e-5;

bool IsInRange(double number) {
    const double size = std::fabs(number);
    return number == 0.0 || (size >= kSmallest && size <= kLargest);
}

void Include(double number, JointPositions& result) {
    if (!IsInRange(number)) result.isComparable = false;
    result.size = std::max(result.size, std::fabs(number));
}

const headless::ActionSource* MotionOf(const headless::Object& model) {
    const auto& actions = model.modelData->actions;
    return actions.size() < 2 ? nullptr : actions[1].get();
}

std::vector<double> FramesOf(const headless::ActionSource& motion) {
    for (const auto& item : motion.items)
        if (item.IsCurve() && item.GetCurve().keys.Count() > 0) {
            const headless::NumberArray& times = *item.GetCurve().keys.times;
            return {times.begin(), times.end()};
        }
    return {};
}

bool ConcernsPosition(const headless::ActionItem& item) {
    return item.channel && *item.channel <= headless::Channel::PosZ;
}

void IncludeCurves(const headless::ActionSource& motion, JointPositions& result) {
    for (const auto& item : motion.items) {
        if (!item.IsCurve()) continue;
        for (const double value : *item.GetCurve().keys.values)
            if (ConcernsPosition(item))
                Include(value, result);
            else if (!(std::fabs(value) <= kLargest))
                result.isComparable = false;
    }
}

}  // namespace

void RequireSoundScene(bool imported, bool numberedFrames) {
    std::vector<std::string> problems = support::SceneProblems(imported);
    if (numberedFrames)
        std::erase_if(problems, [](const std::string& problem) {
            return problem.starts_with("the key times of ");
        });
    Require(problems.empty(), problems.empty() ? "" : problems.front());
}

void RequireKnownStatus(std::int32_t status, const std::string& message) {
    using namespace Zelk::status;
    static constexpr std::int32_t kKnown[] = {kInvalidData,     kUnexpectedEnd, kOutOfMemory,
                                              kInvalidArgument, kFileNotFound,  kIncompatibleFile,
                                              kNoData,          kUnknownName,   kFail};
    if (status >= 0) return Require(status == 0 && message.empty(), "a success with " + message);
    Require(std::find(std::begin(kKnown), std::end(kKnown), status) != std::end(kKnown),
            "status " + support::StatusText(status));
    Require(!message.empty(), "a failure without a message");
    // The inputs are too small to run out of memory.
    Require(message != "Out of memory", message);
}

JointPositions PositionsOf(const support::ProbedSection& section) {
    JointPositions result;
    const headless::Scene& scene = headless::Session::Current().GetScene();
    const headless::Object& model = *scene.FindObject(section.model);
    const headless::ActionSource* const motion = MotionOf(model);
    if (motion == nullptr || section.joints.size() > kMostJoints) {
        result.isComparable = false;
        return result;
    }
    for (const support::WalkJoint& joint : section.parsed.joints)
        for (const double component : joint.offset)
            Include(component, result);
    IncludeCurves(*motion, result);
    if (!result.isComparable) return result;

    const std::vector<double> frames = FramesOf(*motion);
    const std::size_t step = frames.size() / kMostFrames + 1;
    support::SectionMotion poses(section);
    for (std::size_t frame = 0; frame < frames.size(); frame += step) {
        support::SectionMotion::Pose pose = poses.At(frames[frame]);
        result.frames.push_back(frames[frame]);
        result.positions.push_back(std::move(pose.positions));
        result.nearRightAngle.push_back(std::move(pose.nearRightAngle));
    }
    return result;
}

void RequireSamePositions(const std::vector<int>& parents, const std::vector<std::string>& setApart,
                          const JointPositions& nulls, const JointPositions& bones) {
    if (!nulls.isComparable || !bones.isComparable) return;
    Require(nulls.frames == bones.frames, "nulls and bones have different frames");
    const double size = std::max({nulls.size, bones.size, 1.0});
    for (std::size_t frame = 0; frame < nulls.frames.size(); ++frame) {
        std::vector<bool> near(parents.size());
        for (std::size_t joint = 0; joint < parents.size(); ++joint) {
            near[joint] = nulls.nearRightAngle[frame][joint] ||
                          bones.nearRightAngle[frame][joint] ||
                          (parents[joint] >= 0 && near[static_cast<std::size_t>(parents[joint])]);
            if (!setApart[joint].empty()) continue;
            const double distance =
                support::Distance(nulls.positions[frame][joint], bones.positions[frame][joint]) /
                size;
            Require(distance <= (near[joint] ? kToleranceNearRightAngle : kTolerance),
                    "frame " + std::to_string(nulls.frames[frame]) + ", joint " +
                        std::to_string(joint) + ": bones are off by " + std::to_string(distance));
        }
    }
}

}  // namespace fuzz
