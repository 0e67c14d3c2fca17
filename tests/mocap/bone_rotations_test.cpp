// How the rotations of the file are converted to the frames of bones and nulls.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "headless/testing.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/mocap/importer.h"
#include "tests/mocap/step_messages.h"
#include "tests/support/math.h"

namespace {

using mocap_test::Importer;
using mocap_test::Keys;
using support::Matrix4;
using support::RowRotationOfDegrees;
using support::StatusText;
using testing::ElementsAre;

constexpr auto kBiovision = CMocapImportBase::MOCAP_FORMAT_BIOVISION;
constexpr auto kAcclaim = CMocapImportBase::MOCAP_FORMAT_ACCLAIM;

class BoneRotations : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }

    // A detached root, two bones one after the other, and an end.
    static void Build(Importer& importer) {
        importer.frameCount = 2;
        MOCAPMODEL& hips =
            importer.AddNode("Hips", nullptr, {0, 0, 0},
                             {{kRotationX, {10, 1}}, {kRotationY, {20, 2}}, {kRotationZ, {30, 3}}});
        MOCAPMODEL& leg = importer.AddNode(
            "Leg", &hips, {1, -2, 0.5},
            {{kRotationX, {40, 4}}, {kRotationY, {-50, 5}}, {kRotationZ, {60, 6}}});
        MOCAPMODEL& foot = importer.AddNode("Foot", &leg, {3, 1, -1},
                                            {{kPositionX, {7, 8}}, {kRotationY, {25, -35}}});
        importer.AddNode("Foot_End", &foot, {0, 0, 2});
        importer.MakeModel();
        ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded()) << importer.Message();
    }

    // The rotation that the keys of a node give in a frame.
    static Matrix4 RotationOf(MOCAPMODEL& node, std::uint32_t frame) {
        const auto angle = [&](std::uint8_t type) {
            return FindChannel(node, type)->keys[frame].value;
        };
        return RowRotationOfDegrees(angle(kRotationX), angle(kRotationY), angle(kRotationZ));
    }
};

TEST_F(BoneRotations, AreConvertedToTheFrameOfTheBone) {
    for (const auto format : {kBiovision, kAcclaim}) {
        support::StartSession(false);
        Importer importer(format);
        Build(importer);
        const Matrix4 file[3][2] = {
            {RowRotationOfDegrees(10, 20, 30), RowRotationOfDegrees(1, 2, 3)},
            {RowRotationOfDegrees(40, -50, 60), RowRotationOfDegrees(4, 5, 6)},
            {RowRotationOfDegrees(0, 25, 0), RowRotationOfDegrees(0, -35, 0)}};
        ASSERT_EQ(importer.FixBonesRotations(), 0);
        for (std::size_t i = 0; i < 3; ++i) {
            MOCAPMODEL& node = *importer.models[i];
            Matrix4 global, inverse;
            Zelk3DObject bone = node.bone;
            ASSERT_TRUE(bone.IsValid());
            GetBoneGlobalMatrix(bone, L"Skel", global.m, inverse.m);
            const Matrix4 pose =
                RowRotationOfDegrees(node.basePose[3], node.basePose[4], node.basePose[5]);
            for (std::uint32_t frame = 0; frame < 2; ++frame)
                // Some products are rounded, and a decomposition away from right angles.
                EXPECT_LE(
                    Distance(RotationOf(node, frame), global * file[i][frame] * inverse * pose),
                    1e-13);
        }
    }
}

// A joint that the file does not rotate has its base pose in the scene.
TEST_F(BoneRotations, OfZeroInTheFileAreTheBasePose) {
    Importer importer;
    Build(importer);
    for (const auto& node : importer.models)
        for (auto& slot : node->channels)
            if (IsRotation(slot.type))
                for (std::uint32_t frame = 0; frame < 2; ++frame)
                    slot.keys[frame].value = 0.0;
    ASSERT_EQ(importer.FixBonesRotations(), 0);
    for (std::size_t i = 0; i < 3; ++i) {
        MOCAPMODEL& node = *importer.models[i];
        EXPECT_LE(
            Distance(RotationOf(node, 0),
                     RowRotationOfDegrees(node.basePose[3], node.basePose[4], node.basePose[5])),
            1e-13);
    }
}

TEST_F(BoneRotations, OfAnUnrotatedNullKeepTheirOrientation) {
    Importer importer;
    importer.frameCount = 1;
    importer.AddNode("Prop", nullptr, {0, 0, 0}, {{kRotationX, {15}}, {kRotationZ, {40}}});
    importer.MakeModel();
    ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded());
    ASSERT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(4, 6, 5, 0, 0, 0, 0));
    EXPECT_LE(Distance(RotationOf(*importer.models[0], 0), RowRotationOfDegrees(15, 0, 40)), 1e-14);
}

TEST_F(BoneRotations, AreWrittenByTypeAndNotBySlotIndex) {
    Importer importer;
    importer.frameCount = 1;
    importer.AddNode("Prop", nullptr, {0, 0, 0},
                     {{kRotationZ, {40}}, {kPositionY, {5}}, {kRotationX, {15}}});
    importer.MakeModel();
    ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded());
    ASSERT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(6, 2, 4, 5, 0, 0, 0));
    EXPECT_LE(Distance(RotationOf(*importer.models[0], 0), RowRotationOfDegrees(15, 0, 40)), 1e-14);
    EXPECT_THAT(importer.Values(importer.models[0]->channels[1]), ElementsAre(5));
}

TEST_F(BoneRotations, LeaveOtherChannelsAlone) {
    Importer importer;
    importer.frameCount = 2;
    MOCAPMODEL& root =
        importer.AddNode("root", nullptr, {0, 0, 0}, {{kPositionX, {1, 2}}, {kBoneLength, {3, 4}}});
    importer.AddNode("end", &root, {0, 1, 0});
    importer.MakeModel();
    ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded());
    ASSERT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(root), ElementsAre(1, 7, 0, 0, 0, 0, 0));
    EXPECT_THAT(importer.Values(root.channels[0]), ElementsAre(1, 2));
    EXPECT_THAT(importer.Values(root.channels[1]), ElementsAre(3, 4));
}

// Its missing rotations are added before the importer finds that it has no object.
TEST_F(BoneRotations, OfANodeWithoutAnObjectKeepTheirValues) {
    Importer importer;
    importer.frameCount = 1;
    importer.AddNode("nowhere", nullptr, {0, 0, 0}, {{kRotationY, {25}}});
    EXPECT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(5, 4, 6, 0, 0, 0, 0));
    EXPECT_THAT(importer.Values(importer.models[0]->channels[0]), ElementsAre(25));
}

TEST_F(BoneRotations, AreNotAddedToANodeWithoutKeys) {
    Importer importer(kAcclaim);
    importer.frameCount = 2;
    importer.AddNode("silent", nullptr, {0, 0, 0}, {{kRotationX, {}}});
    importer.MakeModel();
    ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded());
    EXPECT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(4, 0, 0, 0, 0, 0, 0));
}

TEST_F(BoneRotations, OfANodeWithARepeatedAxisFail) {
    Importer importer;
    importer.AddNode("twice", nullptr, {0, 0, 0}, {{kRotationX, {}}, {kRotationX, {}}});
    EXPECT_EQ(StatusText(importer.FixBonesRotations()), "0x8007000D");
    EXPECT_EQ(importer.Message(), mocap_test::kRepeatedRotation);
}

TEST_F(BoneRotations, OnlyGetTheirChannelsWithoutFrames) {
    Importer importer;
    importer.AddNode("Prop", nullptr, {0, 0, 0}, {{kRotationZ, {}}});
    importer.MakeModel();
    ASSERT_TRUE(importer.CreateBonesSkeleton().Succeeded());
    EXPECT_EQ(importer.FixBonesRotations(), 0);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(6, 4, 5, 0, 0, 0, 0));
}

TEST_F(BoneRotations, StepTheBarForBvhNodesOnly) {
    for (const auto format : {kBiovision, kAcclaim}) {
        support::StartSession(true);
        Importer importer(format);
        importer.progressBar->SetRange(40);
        importer.AddNode("a", nullptr, {});
        importer.AddNode("b", nullptr, {});
        EXPECT_EQ(importer.FixBonesRotations(), 0);
        support::Lines lines = support::BarLines();
        lines.erase(lines.begin(), lines.begin() + 3);
        if (format == kBiovision)
            EXPECT_THAT(lines, ElementsAre("caption Mapping rotations to bones...", "value 8000",
                                           "value 16000"));
        else
            EXPECT_THAT(lines, ElementsAre("caption Mapping rotations to bones..."));
    }
}

TEST_F(BoneRotations, StopWhenTheUserCancels) {
    support::StartSession(true);
    Importer importer;
    importer.AddNode("a", nullptr, {}, {{kRotationX, {}}});
    importer.AddNode("b", nullptr, {}, {{kRotationX, {}}});
    headless::PressCancelAtPoll(2);
    EXPECT_EQ(StatusText(importer.FixBonesRotations()), "0x800704C7");
    EXPECT_EQ(importer.Message(), mocap_test::kCancelledMessage);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(4, 5, 6, 0, 0, 0, 0));
    EXPECT_THAT(Importer::Types(*importer.models[1]), ElementsAre(4, 0, 0, 0, 0, 0, 0));
}

}  // namespace
