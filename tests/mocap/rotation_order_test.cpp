#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "headless/testing.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/mocap/importer.h"
#include "tests/mocap/step_messages.h"
#include "tests/support/math.h"

namespace rotation_order_test {

using mocap_test::Importer;
using mocap_test::Keys;
using support::Matrix4;
using support::StatusText;
using testing::ElementsAre;
using testing::ElementsAreArray;
using CHANNELS = MOCAPMODEL::CHANNELS;

constexpr auto kBiovision = CMocapImportBase::MOCAP_FORMAT_BIOVISION;
constexpr auto kAcclaim = CMocapImportBase::MOCAP_FORMAT_ACCLAIM;

class RotationOrderTest : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }
};

Matrix4 Turn(int type, double degrees) {
    return support::RowRotation("xyz"[type - kRotationX], support::Radians(degrees));
}

// --- GetAllRotationChannels ---

TEST_F(RotationOrderTest, ListsRotationsInSlotOrder) {
    Importer importer;
    importer.frameCount = 1;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {},
                                        {{kPositionX, {1}},
                                         {kRotationZ, {2}},
                                         {kIgnoredChannel, {3}},
                                         {kRotationX, {4}},
                                         {kBoneLength, {5}},
                                         {kRotationY, {6}}});
    CHANNELS* list[3] = {};
    Importer::GetAllRotationChannels(&node, list);
    EXPECT_THAT(list, ElementsAre(&node.channels[1], &node.channels[3], &node.channels[5]));
}

TEST_F(RotationOrderTest, LeavesTheRestOfTheListAlone) {
    Importer importer;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {}, {{kPositionX, {}}, {kRotationY, {}}});
    CHANNELS mark;
    CHANNELS* list[3] = {&mark, &mark, &mark};
    Importer::GetAllRotationChannels(&node, list);
    EXPECT_THAT(list, ElementsAre(&node.channels[1], &mark, &mark));
}

// --- AllocateAllRotationChannels ---

struct MissingRow {
    const char* name;
    std::vector<int> before;
    std::vector<int> after;
    std::vector<int> list;  // slot indices; the added rotations come last
};
std::ostream& operator<<(std::ostream& out, const MissingRow& row) {
    return out << row.name;
}

const MissingRow kMissingRows[] = {
    {"None", {6, 4, 5}, {6, 4, 5, 0, 0, 0, 0}, {0, 1, 2}},
    {"Z", {5, 4}, {5, 4, 6, 0, 0, 0, 0}, {0, 1, 2}},
    {"Y", {6, 4}, {6, 4, 5, 0, 0, 0, 0}, {0, 1, 2}},
    {"X", {1, 2, 3, 5, 6}, {1, 2, 3, 5, 6, 4, 0}, {3, 4, 5}},
    {"YAndZ", {4}, {4, 5, 6, 0, 0, 0, 0}, {0, 1, 2}},
    {"XAndZ", {5}, {5, 4, 6, 0, 0, 0, 0}, {0, 1, 2}},
    {"XAndY", {6}, {6, 4, 5, 0, 0, 0, 0}, {0, 1, 2}},
    {"GapsAreFilledFirst", {0, 1, 0, 6}, {4, 1, 5, 6, 0, 0, 0}, {3, 0, 2}},
    {"IgnoredStay", {255, 255, 255, 7, 6}, {255, 255, 255, 7, 6, 4, 5}, {4, 5, 6}},
};

class MissingRotation : public testing::TestWithParam<MissingRow> {
  protected:
    void SetUp() override { support::StartSession(false); }

    static MOCAPMODEL& MakeNode(Importer& importer) {
        MOCAPMODEL& node = importer.AddNode("n", nullptr, {});
        for (std::size_t i = 0; i < GetParam().before.size(); ++i) {
            const auto type = static_cast<std::uint8_t>(GetParam().before[i]);
            if (type == kEmptySlot) continue;
            const double first = 10.0 * static_cast<double>(i + 1);
            importer.Fill(node.channels[i], {type, {first, first + 1, first + 2}});
            for (std::uint32_t frame = 0; frame < 3; ++frame)
                node.channels[i].keys[frame].time = 0.5 * (frame + 1);
        }
        return node;
    }
};

TEST_P(MissingRotation, IsAddedWithZeroKeys) {
    Importer importer;
    importer.frameCount = 3;
    MOCAPMODEL& node = MakeNode(importer);
    CHANNELS mark;
    CHANNELS* list[3] = {&mark, &mark, &mark};
    EXPECT_EQ(importer.AllocateAllRotationChannels(&node, list), 0);
    EXPECT_THAT(Importer::Types(node), ElementsAreArray(GetParam().after));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(list[i], &node.channels[GetParam().list[i]]);
    for (std::size_t i = 0; i < 7; ++i) {
        const bool isNew =
            node.channels[i].type != (i < GetParam().before.size() ? GetParam().before[i] : 0);
        if (!isNew) continue;
        EXPECT_THAT(importer.Values(node.channels[i]), ElementsAre(0, 0, 0));
        EXPECT_EQ(node.channels[i].keys[2].time, 1.5);
    }
}

INSTANTIATE_TEST_SUITE_P(, MissingRotation, testing::ValuesIn(kMissingRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RotationOrderTest, ANodeWithoutRotationsNeedsNone) {
    Importer importer;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {}, {{kPositionX, {}}, {kBoneLength, {}}});
    CHANNELS mark;
    CHANNELS* list[3] = {&mark, &mark, &mark};
    EXPECT_EQ(importer.AllocateAllRotationChannels(&node, list), 1);
    EXPECT_THAT(list, ElementsAre(nullptr, nullptr, nullptr));
    EXPECT_THAT(Importer::Types(node), ElementsAre(1, 7, 0, 0, 0, 0, 0));
}

TEST_F(RotationOrderTest, ARepeatedRotationFails) {
    for (const std::vector<std::uint8_t>& types :
         {std::vector<std::uint8_t>{4, 4}, {4, 5, 4}, {4, 5, 6, 4}, {4, 5, 6, 6, 5, 4, 4}}) {
        Importer importer;
        importer.frameCount = 1;
        MOCAPMODEL& node = importer.AddNode("n", nullptr, {});
        for (std::size_t i = 0; i < types.size(); ++i)
            importer.Fill(node.channels[i], {types[i], {1.0}});
        CHANNELS* list[3] = {};
        EXPECT_EQ(StatusText(importer.AllocateAllRotationChannels(&node, list)), "0x8007000D");
        EXPECT_EQ(importer.Message(), mocap_test::kRepeatedRotation);
        // FixRotationsOrder finds it too, whether the rotations are in order or not.
        importer.RecordError(Zelk::CString());
        EXPECT_EQ(StatusText(importer.FixRotationsOrder()), "0x8007000D");
        EXPECT_EQ(importer.Message(), mocap_test::kRepeatedRotation);
    }
}

TEST_F(RotationOrderTest, NeedsASlotForAMissingRotation) {
    Importer importer;
    importer.frameCount = 1;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {},
                                        {{kIgnoredChannel, {1}},
                                         {kIgnoredChannel, {1}},
                                         {kIgnoredChannel, {1}},
                                         {kBoneLength, {1}},
                                         {kBoneLength, {1}},
                                         {kRotationZ, {1}},
                                         {kRotationX, {1}}});
    CHANNELS* list[3] = {};
    EXPECT_EQ(StatusText(importer.AllocateAllRotationChannels(&node, list)), "0x8007000D");
    EXPECT_EQ(importer.Message(), mocap_test::kNoSlot);
    EXPECT_EQ(StatusText(importer.FixRotationsOrder()), "0x8007000D");
    EXPECT_THAT(Importer::Types(node), ElementsAre(255, 255, 255, 7, 7, 6, 4));
}

// --- FixRotationsOrder ---

struct OrderRow {
    const char* name;
    std::vector<int> axes;  // types, as the file lists them
    bool isRewritten;
};
std::ostream& operator<<(std::ostream& out, const OrderRow& row) {
    return out << row.name;
}

const OrderRow kOrderRows[] = {
    {"XYZ", {4, 5, 6}, false}, {"XZY", {4, 6, 5}, true}, {"YXZ", {5, 4, 6}, true},
    {"YZX", {5, 6, 4}, true},  {"ZXY", {6, 4, 5}, true}, {"ZYX", {6, 5, 4}, true},
    {"XY", {4, 5}, false},     {"XZ", {4, 6}, false},    {"YZ", {5, 6}, false},
    {"YX", {5, 4}, true},      {"ZX", {6, 4}, true},     {"ZY", {6, 5}, true},
    {"X", {4}, false},         {"Y", {5}, false},        {"Z", {6}, false},
    {"None", {}, false},
};

class ListedOrder : public testing::TestWithParam<OrderRow> {
  protected:
    void SetUp() override { support::StartSession(false); }

    static constexpr double kAngles[3][2] = {{10, -170}, {35, 80}, {-60, 125}};

    static MOCAPMODEL& MakeNode(Importer& importer) {
        importer.frameCount = 2;
        MOCAPMODEL& node = importer.AddNode("n", nullptr, {}, {{kPositionY, {7, 8}}});
        for (std::size_t i = 0; i < GetParam().axes.size(); ++i)
            importer.Fill(node.channels[i + 1], {static_cast<std::uint8_t>(GetParam().axes[i]),
                                                 {kAngles[i][0], kAngles[i][1]}});
        return node;
    }
};

TEST_P(ListedOrder, BecomesTheOrderOfTheHostWithTheSameOrientation) {
    for (const auto format : {kBiovision, kAcclaim}) {
        Importer importer(format);
        MOCAPMODEL& node = MakeNode(importer);
        const std::vector<int> before = Importer::Types(node);
        ASSERT_EQ(importer.FixRotationsOrder(), 0);
        EXPECT_THAT(importer.Values(node.channels[0]), ElementsAre(7, 8));
        if (!GetParam().isRewritten) {
            EXPECT_EQ(Importer::Types(node), before);
            for (std::size_t i = 0; i < GetParam().axes.size(); ++i)
                EXPECT_THAT(importer.Values(node.channels[i + 1]),
                            ElementsAre(kAngles[i][0], kAngles[i][1]));
            continue;
        }
        EXPECT_THAT(Importer::Types(node), ElementsAre(2, 4, 5, 6, 0, 0, 0));
        for (std::uint32_t frame = 0; frame < 2; ++frame) {
            Matrix4 file = support::kIdentity4;
            for (std::size_t i = 0; i < GetParam().axes.size(); ++i) {
                const Matrix4 turn = Turn(GetParam().axes[i], kAngles[i][frame]);
                // With row vectors the left factor acts first. In BVH the first listed is the
                // outermost.
                file = format == kBiovision ? turn * file : file * turn;
            }
            const Matrix4 host = support::RowRotationOfDegrees(node.channels[1].keys[frame].value,
                                                               node.channels[2].keys[frame].value,
                                                               node.channels[3].keys[frame].value);
            // No pitch above is near a right angle, where the decomposition loses digits.
            EXPECT_LE(Distance(host, file), 1e-13);
            EXPECT_EQ(node.channels[3].keys[frame].time, frame + 1.0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ListedOrder, testing::ValuesIn(kOrderRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(RotationOrderTest, StoresTheAnglesOfTheDecomposition) {
    Importer importer;
    importer.frameCount = 1;
    MOCAPMODEL& node = importer.AddNode(
        "n", nullptr, {}, {{kRotationZ, {30}}, {kRotationX, {10}}, {kRotationY, {20}}});
    ASSERT_EQ(importer.FixRotationsOrder(), 0);
    const Matrix4 file = Turn(kRotationY, 20) *
                         (Turn(kRotationX, 10) * (Turn(kRotationZ, 30) * support::kIdentity4));
    double angles[3];
    MatrixGetEulerAngles(file.m, angles[0], angles[1], angles[2]);
    for (int i = 0; i < 3; ++i)
        EXPECT_DOUBLE_EQ(node.channels[i].keys[0].value, angles[i] * math::kDegreesPerRadian);
}

TEST_F(RotationOrderTest, OnlyChangesTheChannelsWithoutFrames) {
    Importer importer;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {}, {{kRotationY, {}}, {kRotationX, {}}});
    ASSERT_EQ(importer.FixRotationsOrder(), 0);
    EXPECT_THAT(Importer::Types(node), ElementsAre(4, 5, 6, 0, 0, 0, 0));
    EXPECT_NE(node.channels[2].keys, nullptr);
}

// A bone that no frame names has no keys, and its channels stay as they are.
TEST_F(RotationOrderTest, SkipsANodeWithoutKeys) {
    Importer importer(kAcclaim);
    importer.frameCount = 2;
    MOCAPMODEL& node = importer.AddNode("n", nullptr, {}, {{kRotationY, {}}, {kRotationX, {}}});
    ASSERT_EQ(importer.FixRotationsOrder(), 0);
    EXPECT_THAT(Importer::Types(node), ElementsAre(5, 4, 0, 0, 0, 0, 0));
    EXPECT_EQ(node.channels[0].keys, nullptr);
}

TEST_F(RotationOrderTest, AcceptsAnglesThatAreNotFinite) {
    Importer importer;
    importer.frameCount = 2;
    MOCAPMODEL& node = importer.AddNode(
        "n", nullptr, {},
        {{kRotationY, {std::nan(""), HUGE_VAL}}, {kRotationX, {1e300, -HUGE_VAL}}});
    EXPECT_EQ(importer.FixRotationsOrder(), 0);
    EXPECT_THAT(Importer::Types(node), ElementsAre(4, 5, 6, 0, 0, 0, 0));
}

// --- bar and cancelling ---

TEST_F(RotationOrderTest, StepsTheBarForBvhNodesOnly) {
    for (const auto format : {kBiovision, kAcclaim}) {
        support::StartSession(true);
        Importer importer(format);
        importer.progressBar->SetRange(40);
        importer.AddNode("a", nullptr, {});
        importer.AddNode("b", nullptr, {});
        EXPECT_EQ(importer.FixRotationsOrder(), 0);
        support::Lines lines = support::BarLines();
        lines.erase(lines.begin(), lines.begin() + 3);
        if (format == kBiovision)
            EXPECT_THAT(lines, ElementsAre("caption Converting rotations order...", "value 8000",
                                           "value 16000"));
        else
            EXPECT_THAT(lines, ElementsAre("caption Converting rotations order..."));
        EXPECT_EQ(headless::CancelPolls(), 2u);
    }
}

TEST_F(RotationOrderTest, SetsTheCaptionEvenWithoutNodes) {
    support::StartSession(true);
    Importer importer;
    EXPECT_EQ(importer.FixRotationsOrder(), 0);
    EXPECT_EQ(support::BarLines().back(), "caption Converting rotations order...");
    EXPECT_EQ(headless::CancelPolls(), 0u);
}

TEST_F(RotationOrderTest, KeepsWhatWasRewrittenBeforeACancel) {
    support::StartSession(true);
    Importer importer;
    importer.AddNode("a", nullptr, {}, {{kRotationY, {}}, {kRotationX, {}}});
    importer.AddNode("b", nullptr, {}, {{kRotationY, {}}, {kRotationX, {}}});
    headless::PressCancelAtPoll(2);
    EXPECT_EQ(StatusText(importer.FixRotationsOrder()), "0x800704C7");
    EXPECT_EQ(importer.Message(), mocap_test::kCancelledMessage);
    EXPECT_THAT(Importer::Types(*importer.models[0]), ElementsAre(4, 5, 6, 0, 0, 0, 0));
    EXPECT_THAT(Importer::Types(*importer.models[1]), ElementsAre(5, 4, 0, 0, 0, 0, 0));
}

}  // namespace rotation_order_test
