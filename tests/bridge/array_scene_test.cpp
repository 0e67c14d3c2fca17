// Scenes that are built from arrays, as the exporters see them.
#include "bridge/array_scene.h"

#include <cmath>
#include <gmock/gmock.h>
#include <random>
#include <thread>

#include "export/formats.h"
#include "export/motion_facts.h"
#include "export/pose_reader.h"
#include "text/byte_sink.h"

namespace array_scene_test {

using testing::Each;
using testing::ElementsAre;
using testing::Lt;

constexpr std::size_t kRoot = exporters::FileJoint::kNoParent;
constexpr std::size_t kJoints = 3;

// A root, a joint and an end site, with rotations at random and a root that moves.
struct Arrays {
    explicit Arrays(std::size_t frames) {
        std::mt19937 random(7);
        std::normal_distribution<double> number;
        for (std::size_t frame = 0; frame < frames; ++frame) {
            motion.frames.push_back(static_cast<double>(frame + 1));
            for (std::size_t joint = 0; joint < kJoints; ++joint) {
                double q[4] = {number(random), number(random), number(random), number(random)};
                const double length =
                    std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
                for (const double part : q)
                    quaternions.push_back(part / length);
                for (std::size_t axis = 0; axis < 3; ++axis)
                    positions.push_back(joint == 0 ? number(random) : Offset(joint)[axis]);
            }
        }
        motion.name = "made";
        motion.skeleton = {{"Hips", kRoot}, {"Knee", 0}, {"Knee_End", 1, true}};
        for (std::size_t joint = 0; joint < kJoints; ++joint)
            motion.offsets.push_back(Offset(joint));
        motion.secondsPerFrame = 0.1;
        motion.positions = positions.data();
        motion.quaternions = quaternions.data();
    }

    static std::array<double, 3> Offset(std::size_t joint) {
        return {0.5 * static_cast<double>(joint), 1.0, 0.0};
    }

    bridge::ArrayMotion motion;
    std::vector<double> positions, quaternions;
};

exporters::Options OptionsOf(const bridge::ArrayMotion& motion) {
    exporters::Options options;
    options.skeletons = {motion.skeleton};
    return options;
}

// How far the poses that are read from the scene are from the arrays: of quaternions the sine of
// the angle, of positions the distance.
std::vector<double> Differences(const Arrays& arrays, const headless::Recording& recording) {
    std::string problem;
    const exporters::PoseReader reader(*recording.scene, OptionsOf(arrays.motion), problem);
    EXPECT_EQ(problem, "");
    const std::size_t poses = arrays.motion.frames.size() * kJoints;
    std::vector<double> global(7 * poses), positions(3 * poses), quaternions(4 * poses);
    EXPECT_EQ(
        reader.Read(
            {global.data(), global.data() + 3 * poses, positions.data(), quaternions.data()}, 1),
        "");
    std::vector<double> differences;
    for (std::size_t pose = 0; pose < poses; ++pose) {
        double cosine = 0.0;
        for (std::size_t part = 0; part < 4; ++part)
            cosine += quaternions[4 * pose + part] * arrays.quaternions[4 * pose + part];
        differences.push_back(std::sqrt(std::abs(1.0 - cosine * cosine)));
        for (std::size_t axis = 0; axis < 3; ++axis)
            differences.push_back(
                std::abs(positions[3 * pose + axis] - arrays.positions[3 * pose + axis]));
    }
    return differences;
}

TEST(ArrayScene, HoldsThePosesOfTheArrays) {
    for (const std::size_t frames : {1U, 2U, 500U}) {
        const Arrays arrays(frames);
        const headless::Recording recording = bridge::BuildScene(arrays.motion);
        EXPECT_THAT(Differences(arrays, recording), Each(Lt(1e-7))) << frames;
    }
}

TEST(ArrayScene, HoldsItsNamesAndItsRate) {
    Arrays arrays(4);
    arrays.motion.skeleton[1].name = "made";  // as the model
    const headless::Recording recording = bridge::BuildScene(arrays.motion);
    std::string problem;
    const exporters::PoseReader reader(*recording.scene, OptionsOf(arrays.motion), problem);
    const exporters::PoseTable& table = reader.Table();
    ASSERT_EQ(table.columns.size(), kJoints);
    EXPECT_EQ(table.columns[1].sourceName, "made");
    EXPECT_TRUE(table.columns[2].isEndSite);
    EXPECT_THAT(table.columns[2].offset, ElementsAre(1.0, 1.0, 0.0));
    EXPECT_NEAR(table.framesPerSecond, 10.0, 1e-12);
    EXPECT_THAT(table.frameNumbers, ElementsAre(1, 2, 3, 4));
}

// The angles go on beyond a half turn, so that nothing between two keys turns the long way.
TEST(ArrayScene, HasCurvesWithoutJumps) {
    Arrays arrays(100);
    for (std::size_t frame = 0; frame < 100; ++frame) {
        const double half = 0.1 * static_cast<double>(frame);
        const double q[] = {0.0, std::sin(half), 0.0, std::cos(half)};
        std::copy(q, q + 4, arrays.quaternions.begin() + static_cast<std::ptrdiff_t>(12 * frame));
    }
    const headless::Recording recording = bridge::BuildScene(arrays.motion);
    const headless::Object& model = *recording.scene->Models().front();
    for (const headless::ActionItem& item : exporters::MotionOf(model)->items) {
        const auto target = recording.scene->ResolveTarget(model, item);
        const bool isHips = target.object->name == Zelk::CString(L"Hips");
        if (!isHips || target.channel < headless::Channel::RotX) continue;
        const headless::NumberArray& values = *item.GetCurve().keys.values;
        for (std::size_t frame = 1; frame < values.size(); ++frame)
            EXPECT_LT(std::abs(values[frame] - values[frame - 1]), 12.0) << frame;
    }
}

TEST(ArrayScene, HasOnlyABasePoseWithoutARate) {
    Arrays arrays(1);
    arrays.motion.secondsPerFrame = 0.0;
    const headless::Recording recording = bridge::BuildScene(arrays.motion);
    EXPECT_EQ(exporters::MotionOf(*recording.scene->Models().front()), nullptr);
}

TEST(ArrayScene, IsWrittenInEachFormat) {
    const Arrays arrays(5);
    const headless::Recording recording = bridge::BuildScene(arrays.motion);
    const exporters::Options options = OptionsOf(arrays.motion);
    exporters::RunRecord record{0, recording.log, recording.bar, recording.commands};
    record.userInput = "{}";
    for (const exporters::Format& format : exporters::Formats()) {
        text::StringSink out, side;
        exporters::Notes notes;
        EXPECT_EQ(exporters::Write(format, {*recording.scene, options, &record},
                                   {out, &side, "made.bin"}, notes),
                  "")
            << format.extension;
        EXPECT_FALSE(out.Bytes().empty());
    }
}

TEST(ArrayScene, IsBuiltByOneThreadAtATime) {
    const Arrays arrays(50);
    std::vector<headless::Recording> recordings(4);
    std::vector<std::thread> threads;
    for (headless::Recording& recording : recordings)
        threads.emplace_back([&] { recording = bridge::BuildScene(arrays.motion); });
    for (std::thread& thread : threads)
        thread.join();
    for (const headless::Recording& recording : recordings)
        EXPECT_THAT(Differences(arrays, recording), Each(Lt(1e-7)));
}

}  // namespace array_scene_test
