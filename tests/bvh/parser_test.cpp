// The nodes that the parser makes of a HIERARCHY. No scene object is made.
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/bvh/samples.h"
#include "tests/support/parsed_bvh.h"

namespace {

using support::ParsedBvh;
using testing::ElementsAre;
using testing::IsEmpty;

class BvhParser : public testing::Test {
  protected:
    // The types of a node's slots, empty ones included.
    static std::vector<int> Types(const MOCAPMODEL& node) {
        std::vector<int> types;
        for (const auto& slot : node.channels)
            types.push_back(slot.type);
        // A node has no slots until the first is used; they count as empty.
        types.resize(MOCAPMODEL::kSlotCount);
        return types;
    }

    ParsedBvh parsed_;
};

TEST_F(BvhParser, ReadsATreeInTheFilesOrder) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kTree), 0);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < parsed_.skeleton.models.size(); ++i)
        names.push_back(parsed_.Name(i));
    EXPECT_THAT(names, ElementsAre("Hips", "Spine", "Head", "Head_End", "Arm", "Hand", "Finger",
                                   "Finger_End", "Prop"));
    const std::vector<int> parents = {-1, 0, 1, 2, 1, 4, 5, 6, 0};
    const std::vector<unsigned> depths = {0, 1, 2, 3, 2, 3, 4, 5, 1};
    const std::vector<unsigned> children = {2, 2, 1, 0, 1, 1, 1, 0, 0};
    const std::vector<unsigned> boneChildren = {1, 2, 0, 0, 1, 1, 1, 0, 0};
    const std::vector<bool> detached = {true, false, false, true, false, false, false, false, true};
    for (std::size_t i = 0; i < parents.size(); ++i) {
        SCOPED_TRACE(names[i]);
        const MOCAPMODEL& node = parsed_.Node(i);
        const MOCAPMODEL* const parent =
            parents[i] < 0 ? nullptr : &parsed_.Node(static_cast<std::size_t>(parents[i]));
        EXPECT_EQ(node.parent, parent);
        EXPECT_EQ(node.depth, depths[i]);
        EXPECT_EQ(node.childCount, children[i]);
        EXPECT_EQ(node.boneChildCount, boneChildren[i]);
        EXPECT_EQ(node.isDetached, detached[i]);
        EXPECT_EQ(node.isEndSite, i == 3 || i == 7);
    }
    EXPECT_EQ(parsed_.skeleton.channelCount, 18u);
}

TEST_F(BvhParser, AddsOffsetsToGlobalPositions) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kTree), 0);
    const MOCAPMODEL& finger = parsed_.Node(6);
    EXPECT_THAT(finger.offset, ElementsAre(1, 0, 0));
    EXPECT_THAT(finger.globalPosition, ElementsAre(10, 14, 0));
    EXPECT_THAT(parsed_.Node(0).globalPosition, ElementsAre(0, 1, 0));
    EXPECT_THAT(parsed_.Node(3).globalPosition, ElementsAre(0, 17, 1));
}

TEST_F(BvhParser, FillsSlotsFromTheFirstInTheFilesOrder) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kTree), 0);
    EXPECT_THAT(Types(parsed_.Node(0)), ElementsAre(1, 2, 3, 6, 4, 5, 0));
    EXPECT_THAT(Types(parsed_.Node(4)), ElementsAre(5, 6, 4, 0, 0, 0, 0));
    EXPECT_THAT(Types(parsed_.Node(5)), testing::Each(0));
    EXPECT_THAT(Types(parsed_.Node(8)), ElementsAre(1, 6, 5, 0, 0, 0, 0));
}

TEST_F(BvhParser, ReadsKeywordsInAnyLetterCase) {
    const char* const text =
        "hierarchy rOOt H { oFFset 0 1 0 chaNNels 2 XPOSITION zrotation joint J { offset 0 1 0 "
        "eND sITE { Offset 0 1 0 } } } mOTION fRAMES: 1 fRAME tIME: 0.5 7 8";
    ASSERT_EQ(parsed_.Parse(text), 0);
    EXPECT_EQ(parsed_.skeleton.models.size(), 3u);
    EXPECT_EQ(parsed_.Name(2), "J_End");
    EXPECT_THAT(Types(parsed_.Node(0)), ElementsAre(1, 6, 0, 0, 0, 0, 0));
    EXPECT_EQ(parsed_.Node(0).channels[1].keys[0].value, 8.0);
}

TEST_F(BvhParser, NamesEndSitesAfterTheirParents) {
    ASSERT_EQ(parsed_.Parse("HIERARCHY ROOT Hips { OFFSET 0 0 0 End Site { OFFSET 0 1 0 "
                            "End Site { OFFSET 0 1 0 } } } End Site { OFFSET 1 0 0 }"),
              1);
    EXPECT_EQ(parsed_.Name(1), "Hips_End");
    EXPECT_EQ(parsed_.Name(2), "Hips_End_End");
    EXPECT_EQ(parsed_.Name(3), "End_Site");
    EXPECT_EQ(parsed_.Node(3).parent, nullptr);
    EXPECT_TRUE(parsed_.Node(3).isEndSite);
}

TEST_F(BvhParser, ReadsChannelsOfEndSitesToo) {
    ASSERT_EQ(parsed_.Parse("HIERARCHY End Site { OFFSET 0 1 0 CHANNELS 1 Xrotation } MOTION "
                            "Frames: 1 Frame Time: 1 5"),
              0);
    EXPECT_EQ(parsed_.Node(0).channels[0].keys[0].value, 5.0);
}

TEST_F(BvhParser, TreatsRootAndJointAlike) {
    ASSERT_EQ(parsed_.Parse("HIERARCHY JOINT A { OFFSET 0 0 0 ROOT B { OFFSET 0 1 0 } } ROOT C { "
                            "OFFSET 0 0 0 }"),
              1);
    EXPECT_EQ(parsed_.Node(0).parent, nullptr);
    EXPECT_EQ(parsed_.Node(1).parent, &parsed_.Node(0));
    EXPECT_EQ(parsed_.Node(2).parent, nullptr);
}

TEST_F(BvhParser, AcceptsAnyTokenAsAName) {
    ASSERT_EQ(parsed_.Parse("HIERARCHY ROOT ROOT { OFFSET 0 0 0 JOINT { { OFFSET 0 1 0 } JOINT "
                            "MOTION { OFFSET 0 1 0 } JOINT CHANNELS { OFFSET 0 0 0 } }"),
              1);
    EXPECT_EQ(parsed_.Name(0), "ROOT");
    EXPECT_EQ(parsed_.Name(1), "{");
    EXPECT_EQ(parsed_.Name(2), "MOTION");
    EXPECT_EQ(parsed_.Name(3), "CHANNELS");
}

TEST_F(BvhParser, AcceptsAChannelCountOfZeroOrLess) {
    for (const char* count : {"0", "-0", "-3", "0x6"}) {
        ASSERT_EQ(parsed_.Parse(bvh_test::kStill.substr(0, bvh_test::kStill.find('}')) +
                                "CHANNELS " + count + "\n}\nMOTION\nFrames: 0\nFrame Time: 1"),
                  0)
            << count;
        EXPECT_EQ(parsed_.skeleton.channelCount, 0u);
        EXPECT_THAT(Types(parsed_.Node(0)), testing::Each(0));
    }
}

struct ChildRow {
    const char* name;
    const char* offset;
    const char* channels;
    bool isDetached;
    unsigned boneChildCount;  // of the parent
};
std::ostream& operator<<(std::ostream& out, const ChildRow& row) {
    return out << row.name;
}

const ChildRow kChildRows[] = {
    {"Offset", "0 1 0", "1 Xrotation", false, 1},
    {"NoOffset", "0 0 0", "1 Xrotation", true, 0},
    {"MinusZeroOffset", "-0 -0.0 0", "0", true, 0},
    {"TinyOffset", "0 0 1e-300", "0", false, 1},
    {"NanOffset", "0 nan 0", "0", false, 1},
    // The offset counts the node as a bone before its position channel is read and detaches it.
    {"PositionX", "0 1 0", "1 Xposition", true, 1},
    {"PositionY", "0 1 0", "1 yposition", true, 1},
    {"PositionZ", "0 1 0", "2 Xrotation Zposition", true, 1},
    {"PositionWithoutOffset", "0 0 0", "1 Zposition", true, 0},
};

class ChildNode : public testing::TestWithParam<ChildRow> {};

TEST_P(ChildNode, IsDetachedAndCountedByItsOffsetAndChannels) {
    ParsedBvh parsed;
    ASSERT_EQ(parsed.Parse(std::string("HIERARCHY ROOT A { OFFSET 0 1 0 JOINT B { OFFSET ") +
                           GetParam().offset + " CHANNELS " + GetParam().channels + " } }"),
              1);
    EXPECT_EQ(parsed.Node(1).isDetached, GetParam().isDetached);
    EXPECT_EQ(parsed.Node(0).boneChildCount, GetParam().boneChildCount);
    EXPECT_EQ(parsed.Node(0).childCount, 1u);
    EXPECT_FALSE(parsed.Node(0).isDetached);
}

INSTANTIATE_TEST_SUITE_P(, ChildNode, testing::ValuesIn(kChildRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BvhParser, ReturnsOneForAFileThatEndsAfterItsHierarchy) {
    EXPECT_EQ(parsed_.Parse("HIERARCHY\nROOT A { OFFSET 0 1 0 CHANNELS 1 Xrotation }\n"), 1);
    EXPECT_EQ(parsed_.Message(), "");
    EXPECT_EQ(parsed_.skeleton.channelCount, 1u);
    EXPECT_EQ(parsed_.skeleton.frameCount, 0u);
    EXPECT_EQ(parsed_.Node(0).channels[0].keys, nullptr);
    EXPECT_EQ(parsed_.Parse("HIERARCHY"), 1);
    EXPECT_THAT(parsed_.skeleton.models, IsEmpty());
}

TEST_F(BvhParser, ReadsAMotionInsideOpenBraces) {
    EXPECT_EQ(parsed_.Parse("HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 1 Xrotation MOTION Frames: 1 "
                            "Frame Time: 1 5"),
              0);
    EXPECT_EQ(parsed_.Node(0).channels[0].keys[0].value, 5.0);
}

TEST_F(BvhParser, KeepsTheNodesThatItReadBeforeAFailure) {
    EXPECT_LT(parsed_.Parse("HIERARCHY ROOT A { OFFSET 0 1 0 JOINT B { OFFSET 0 1"), 0);
    EXPECT_EQ(parsed_.skeleton.models.size(), 2u);
}

}  // namespace
