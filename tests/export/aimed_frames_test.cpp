#include "export/aimed_frames.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/exported_motion.h"
#include "tests/export/exported.h"

namespace aimed_frames_test {

using headless::Transform;

struct Figure {
    std::vector<exporters::Joint> joints;
    std::vector<Transform> locals;   // at rest
    std::vector<Transform> globals;  // at rest
};

Figure RestOf(const exported::ImportSettings& settings) {
    EXPECT_TRUE(exported::Import(exported::Samples()[0], settings));
    const headless::Object& model = *exported::CurrentScene().Models().front();
    const exporters::ExportedMotion pose(exported::CurrentScene(), {&model, 0}, {});
    Figure figure;
    figure.joints = pose.Joints();
    figure.locals.resize(figure.joints.size());
    pose.BaseLocals(figure.locals);
    figure.globals.resize(figure.joints.size());
    exporters::ComputeGlobals(figure.joints, figure.locals, figure.globals);
    return figure;
}

std::size_t IndexOf(const Figure& figure, const std::wstring& name) {
    for (std::size_t joint = 0; joint < figure.joints.size(); ++joint)
        if (figure.joints[joint].name == name) return joint;
    ADD_FAILURE();
    return 0;
}

// To which child the y axis of a joint must point.
struct Row {
    const wchar_t* joint;
    const wchar_t* child;
};
const Row kRows[] = {
    {L"Hips", L"Spine"},                                 // most joints are above the spine
    {L"LeftUpLeg", L"LeftLeg"},   {L"Spine2", L"Neck"},  // straight on, not to a shoulder
    {L"LeftToe", L"LeftToe_End"}, {L"RightHand", L"RightHand_End"},
};

class AimedFrames : public testing::TestWithParam<bool> {};

TEST_P(AimedFrames, PointToTheChildThatContinuesTheBone) {
    Figure figure = RestOf({.nulls = GetParam()});
    const exporters::AimedFrames aim(figure.joints, figure.globals);
    const std::vector<Transform> before = figure.globals;
    aim.ApplyToGlobals(figure.globals);
    for (const Row& row : kRows) {
        const Transform& from = figure.globals[IndexOf(figure, row.joint)];
        const Transform& to = figure.globals[IndexOf(figure, row.child)];
        const double length =
            std::hypot(to.origin[0] - from.origin[0], to.origin[1] - from.origin[1],
                       to.origin[2] - from.origin[2]);
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(from.axes[1][axis], (to.origin[axis] - from.origin[axis]) / length, 1e-12)
                << testing::PrintToString(std::wstring(row.joint));
    }
    for (std::size_t joint = 0; joint < before.size(); ++joint)
        for (int axis = 0; axis < 3; ++axis)
            EXPECT_EQ(figure.globals[joint].origin[axis], before[joint].origin[axis]);
}

TEST_P(AimedFrames, AreTheSameFromLocalTransforms) {
    Figure figure = RestOf({.nulls = GetParam()});
    const exporters::AimedFrames aim(figure.joints, figure.globals);
    aim.ApplyToLocals(figure.locals);
    aim.ApplyToGlobals(figure.globals);
    std::vector<Transform> composed(figure.joints.size());
    exporters::ComputeGlobals(figure.joints, figure.locals, composed);
    for (std::size_t joint = 0; joint < composed.size(); ++joint) {
        for (int row = 0; row < 3; ++row) {
            EXPECT_NEAR(composed[joint].origin[row], figure.globals[joint].origin[row], 1e-10);
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(composed[joint].axes[row][column],
                            figure.globals[joint].axes[row][column], 1e-12);
        }
    }
}

// Each frame is a rotation: its axes are unit vectors at right angles, and it is right-handed.
TEST_P(AimedFrames, AreRotations) {
    Figure figure = RestOf({.nulls = GetParam()});
    exporters::AimedFrames(figure.joints, figure.globals).ApplyToGlobals(figure.globals);
    for (const Transform& global : figure.globals) {
        const Transform product = global * headless::Inverse(global);
        const auto& a = global.axes;
        const double determinant = a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) -
                                   a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
                                   a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
        EXPECT_NEAR(determinant, 1.0, 1e-12);
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                EXPECT_NEAR(product.axes[row][column], row == column ? 1.0 : 0.0, 1e-12);
    }
}

INSTANTIATE_TEST_SUITE_P(, AimedFrames, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

TEST(AimedFramesWithoutLengths, LeaveASkeletonWithoutLengthsAlone) {
    const std::vector<exporters::Joint> joints(3);
    const std::vector<Transform> before(3, headless::FromLocal({1, 2, 3, 10, 20, 30}));
    std::vector<Transform> globals = before;
    exporters::AimedFrames(joints, globals).ApplyToGlobals(globals);
    for (std::size_t joint = 0; joint < 3; ++joint)
        for (int row = 0; row < 3; ++row)
            EXPECT_THAT(globals[joint].axes[row],
                        testing::Pointwise(testing::DoubleNear(1e-15), before[joint].axes[row]));
}

}  // namespace aimed_frames_test
