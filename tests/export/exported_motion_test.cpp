// How the options change poses: the up axis, motion in place, samples.
#include "export/exported_motion.h"

#include <cmath>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numbers>

#include "export/pose_blend.h"
#include "export/quaternion.h"
#include "tests/export/exported.h"

namespace exported_motion_test {

using exporters::Options;
using exporters::UpAxis;
using headless::Transform;
using testing::DoubleNear;
using testing::ElementsAre;

// A root that moves along all axes and turns, and an arm.
const std::string kWander =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\nJOINT Arm\n{\nOFFSET 0 9 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 4 0 0\n}\n}\n}\nMOTION\nFrames: 3\nFrame Time: 0.25\n"
    "1 2 3 0 0 0  0 0 0\n4 5 7 10 20 30  0 0 170\n9 1 -2 90 0 0  0 0 -170\n";

// The global positions of the joints at a frame, after the turn of the options.
std::vector<std::array<double, 3>> Positions(const Options& options, double frame) {
    const headless::Object& model = *exported::CurrentScene().Models().front();
    exporters::Notes notes;
    const exporters::ExportedMotion motion(exported::CurrentScene(), {&model, 0},
                                           exported::MotionOf(model), options, false, notes);
    std::vector<Transform> poses(motion.Joints().size());
    exporters::ExportedMotion::Scratch scratch;
    motion.Locals(frame, poses, scratch);
    motion.TurnTopJoints(poses);
    exporters::ComputeGlobals(motion.Joints(), poses, poses);
    std::vector<std::array<double, 3>> positions;
    for (const Transform& pose : poses)
        positions.push_back({pose.origin[0], pose.origin[1], pose.origin[2]});
    return positions;
}

TEST(ExportedMotion, TurnsTheUpAxisToY) {
    ASSERT_TRUE(exported::ImportText(kWander));
    EXPECT_THAT(Positions({.up = UpAxis::Y}, 2)[0], ElementsAre(4, 5, 7));
    EXPECT_THAT(Positions({.up = UpAxis::Z}, 2)[0], ElementsAre(4, 7, -5));
    EXPECT_THAT(Positions({.up = UpAxis::X}, 2)[0], ElementsAre(-5, 4, 7));
}

struct InPlaceRow {
    const char* name;
    UpAxis up;
    // The positions of the root in the three frames, in the scene's axes.
    std::array<std::array<double, 3>, 3> positions;
};

const InPlaceRow kInPlace[] = {
    {"XUp", UpAxis::X, {{{1, 2, 3}, {4, 2, 3}, {9, 2, 3}}}},
    {"YUp", UpAxis::Y, {{{1, 2, 3}, {1, 5, 3}, {1, 1, 3}}}},
    {"ZUp", UpAxis::Z, {{{1, 2, 3}, {1, 2, 7}, {1, 2, -2}}}},
};

class InPlace : public testing::TestWithParam<InPlaceRow> {};

TEST_P(InPlace, HoldsTheRootOnTheGround) {
    ASSERT_TRUE(exported::ImportText(kWander));
    const headless::Object& model = *exported::CurrentScene().Models().front();
    exporters::Notes notes;
    const exporters::ExportedMotion motion(exported::CurrentScene(), {&model, 0},
                                           exported::MotionOf(model),
                                           {.up = GetParam().up, .inPlace = true}, false, notes);
    std::vector<Transform> poses(motion.Joints().size());
    exporters::ExportedMotion::Scratch scratch;
    for (std::size_t frame = 0; frame < 3; ++frame) {
        motion.Locals(static_cast<double>(frame + 1), poses, scratch);
        EXPECT_THAT(poses[0].origin, testing::ElementsAreArray(GetParam().positions[frame]));
    }
}

INSTANTIATE_TEST_SUITE_P(, InPlace, testing::ValuesIn(kInPlace),
                         [](const auto& row) { return row.param.name; });

TEST(InPlaceMotion, BeginsWhereTheFrameRangeBegins) {
    ASSERT_TRUE(exported::ImportText(kWander));
    const Options options{.frames = exporters::FrameRange{2, 3}, .inPlace = true};
    EXPECT_THAT(Positions(options, 3)[0], ElementsAre(4, 1, 7));
}

TEST(InPlaceMotion, KeepsTheShapeOfTheFigure) {
    ASSERT_TRUE(exported::ImportText(kWander));
    const auto moved = Positions({}, 3);
    const auto held = Positions({.inPlace = true}, 3);
    for (std::size_t joint = 0; joint < moved.size(); ++joint)
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(held[joint][axis] - held[0][axis], moved[joint][axis] - moved[0][axis],
                        1e-12);
}

// The arm turns from 170 to -170 degrees, which is 20 degrees the short way.
TEST(Samples, TurnTheShortWay) {
    ASSERT_TRUE(exported::ImportText(kWander));
    const Options options{.resampleTo = 8.0};
    const auto middle = Positions(options, 2.5);
    const auto before = Positions(options, 2.0);
    // The root moves along a straight line.
    for (std::size_t axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(middle[0][axis], (before[0][axis] + Positions(options, 3.0)[0][axis]) / 2,
                    1e-12);
    const headless::Object& model = *exported::CurrentScene().Models().front();
    exporters::Notes notes;
    const exporters::ExportedMotion motion(exported::CurrentScene(), {&model, 0},
                                           exported::MotionOf(model), options, false, notes);
    std::vector<Transform> poses(motion.Joints().size());
    exporters::ExportedMotion::Scratch scratch;
    motion.Locals(2.5, poses, scratch);
    EXPECT_NEAR(poses[1].axes[0][0], -1.0, 1e-12);
    EXPECT_NEAR(poses[1].axes[2][2], -1.0, 1e-12);
}

TEST(Samples, AreTheSameInAnyOrder) {
    ASSERT_TRUE(exported::ImportText(kWander));
    const headless::Object& model = *exported::CurrentScene().Models().front();
    exporters::Notes notes;
    const exporters::ExportedMotion motion(exported::CurrentScene(), {&model, 0},
                                           exported::MotionOf(model), {.resampleTo = 8.0}, false,
                                           notes);
    std::vector<Transform> poses(motion.Joints().size());
    exporters::ExportedMotion::Scratch used;
    for (const double frame : {1.25, 2.75, 1.5, 2.5, 3.0, 0.0, 9.0, 1.75}) {
        motion.Locals(frame, poses, used);
        const auto atOnce = Positions({.resampleTo = 8.0}, frame);
        exporters::ComputeGlobals(motion.Joints(), poses, poses);
        for (std::size_t joint = 0; joint < poses.size(); ++joint)
            EXPECT_THAT(poses[joint].origin, testing::ElementsAreArray(atOnce[joint])) << frame;
    }
}

TEST(BlendPoses, KeepsTheBitsOfWhatDoesNotChange) {
    std::vector<Transform> from = {headless::FromLocal({0.1, 0.2, 0.3, 10, 20, 30})};
    const std::vector<Transform> to = from;
    exporters::BlendPoses(from, to, 0.3);
    EXPECT_EQ(std::memcmp(from.data(), to.data(), sizeof(Transform)), 0);
}

TEST(PutAxes, IsTheInverseOfQuaternionOf) {
    const Transform pose = headless::FromLocal({0, 0, 0, 50, -70, 110});
    Transform back;
    exporters::PutAxes(exporters::QuaternionOf(pose.axes), back.axes);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            EXPECT_NEAR(back.axes[row][column], pose.axes[row][column], 1e-15);
}

}  // namespace exported_motion_test
