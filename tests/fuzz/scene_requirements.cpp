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
// Numbers beyond these leave a double too few digits for a comparison.
constexpr double kLargest = 1e6;
constexpr double kSmallest = 1e-3;
// Of the size. Near gimbal lock the decomposition rounds a cosine below 1e-5 to 0.
constexpr double kTolerance = 1e-6;
constexpr double kToleranceNearRightAngle = 3e-5;

bool IsPlain(double number) {
    const double size = std::fabs(number);
    return number == 0.0 || (size >= kSmallest && size <= kLargest);
}

void Measure(double number, Places& places) {
    if (!IsPlain(number)) places.isMeasured = false;
    places.size = std::max(places.size, std::fabs(number));
}

const headless::ActionSource* MotionOf(const headless::Object& model) {
    const auto& actions = model.modelData->actions;
    return actions.size() < 2 ? nullptr : actions[1].get();
}

std::vector<double> FramesOf(const headless::ActionSource& motion) {
    for (const auto& item : motion.items)
        if (item.IsCurve() && item.GetCurve().keys.Count() > 0) return *item.GetCurve().keys.times;
    return {};
}

bool ConcernsPosition(const headless::ActionItem& item) {
    return item.channel && *item.channel <= headless::Channel::PosZ;
}

void MeasureCurves(const headless::ActionSource& motion, Places& places) {
    for (const auto& item : motion.items) {
        if (!item.IsCurve()) continue;
        for (const double value : *item.GetCurve().keys.values)
            if (ConcernsPosition(item))
                Measure(value, places);
            else if (!(std::fabs(value) <= kLargest))
                places.isMeasured = false;
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
    // Nothing here takes more memory than there is.
    Require(message != "Out of memory", message);
}

Places PlacesOf(const support::ProbedSection& section) {
    Places places;
    const headless::Scene& scene = headless::Session::Current().GetScene();
    const headless::Object& model = *scene.FindObject(section.model);
    const headless::ActionSource* const motion = MotionOf(model);
    if (motion == nullptr || section.joints.size() > kMostJoints) {
        places.isMeasured = false;
        return places;
    }
    for (const support::WalkJoint& joint : section.parsed.joints)
        for (const double component : joint.offset)
            Measure(component, places);
    MeasureCurves(*motion, places);
    if (!places.isMeasured) return places;

    const std::vector<double> frames = FramesOf(*motion);
    const std::size_t step = frames.size() / kMostFrames + 1;
    support::SectionMotion poses(section);
    for (std::size_t frame = 0; frame < frames.size(); frame += step) {
        support::SectionMotion::Pose pose = poses.At(frames[frame]);
        places.frames.push_back(frames[frame]);
        places.positions.push_back(std::move(pose.positions));
        places.nearRightAngle.push_back(std::move(pose.nearRightAngle));
    }
    return places;
}

void RequireSamePlaces(const std::vector<int>& parents, const std::vector<std::string>& setApart,
                       const Places& nulls, const Places& bones) {
    if (!nulls.isMeasured || !bones.isMeasured) return;
    Require(nulls.frames == bones.frames, "nulls and bones have different frames");
    const double size = std::max({nulls.size, bones.size, 1.0});
    for (std::size_t frame = 0; frame < nulls.frames.size(); ++frame) {
        std::vector<bool> near(parents.size());
        for (std::size_t joint = 0; joint < parents.size(); ++joint) {
            near[joint] = nulls.nearRightAngle[frame][joint] ||
                          bones.nearRightAngle[frame][joint] ||
                          (parents[joint] >= 0 && near[static_cast<std::size_t>(parents[joint])]);
            if (!setApart[joint].empty()) continue;
            const double off =
                support::Distance(nulls.positions[frame][joint], bones.positions[frame][joint]) /
                size;
            Require(off <= (near[joint] ? kToleranceNearRightAngle : kTolerance),
                    "frame " + std::to_string(nulls.frames[frame]) + ", joint " +
                        std::to_string(joint) + ": bones are off by " + std::to_string(off));
        }
    }
}

}  // namespace fuzz
