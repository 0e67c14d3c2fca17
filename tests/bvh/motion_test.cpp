// The keys that the parser makes of a MOTION.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "tests/bvh/samples.h"
#include "tests/support/parsed_bvh.h"

namespace {

using support::ParsedBvh;
using testing::ElementsAre;

class BvhMotion : public testing::Test {
  protected:
    std::vector<double> Values(std::size_t node, std::size_t slot) {
        std::vector<double> values;
        for (std::uint32_t i = 0; i < parsed_.skeleton.frameCount; ++i)
            values.push_back(parsed_.Node(node).channels[slot].keys[i].value);
        return values;
    }

    ParsedBvh parsed_;
};

TEST_F(BvhMotion, AssignsTheValuesToChannelsFrameByFrame) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kChain), 0);
    EXPECT_EQ(parsed_.skeleton.frameCount, 2u);
    EXPECT_EQ(parsed_.skeleton.channelCount, 9u);
    EXPECT_THAT(Values(0, 0), ElementsAre(0, 1));
    EXPECT_THAT(Values(0, 1), ElementsAre(20, 21));
    EXPECT_THAT(Values(0, 3), ElementsAre(10, -10));
    EXPECT_THAT(Values(0, 5), ElementsAre(30, 35));
    EXPECT_THAT(Values(1, 0), ElementsAre(-5, 5));
    EXPECT_THAT(Values(1, 2), ElementsAre(2.5, 0));
}

TEST_F(BvhMotion, CountsFramesFromOne) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kChain), 0);
    for (std::size_t node = 0; node < 2; ++node)
        for (const auto& slot : parsed_.Node(node).channels) {
            if (slot.type == kEmptySlot) continue;
            EXPECT_EQ(slot.keys[0].time, 1.0);
            EXPECT_EQ(slot.keys[1].time, 2.0);
        }
}

TEST_F(BvhMotion, NeedsNoLineBreaks) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kOneLine), 0);
    EXPECT_THAT(Values(0, 0), ElementsAre(1, 3));
    EXPECT_THAT(Values(0, 1), ElementsAre(2, 4));
}

TEST_F(BvhMotion, LeavesTheTextAfterItUnread) {
    ASSERT_EQ(parsed_.Parse(bvh_test::kOneLine + " 5 6 HIERARCHY"), 0);
    EXPECT_STREQ(parsed_.file.GetNextString(), "5");
}

TEST_F(BvhMotion, HasEmptyKeysWithoutFrames) {
    ASSERT_EQ(
        parsed_.Parse("HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 2 Xrotation Zrotation } MOTION "
                      "Frames: 0 Frame Time: 0.1 7"),
        0);
    EXPECT_EQ(parsed_.skeleton.frameCount, 0u);
    EXPECT_NE(parsed_.Node(0).channels[0].keys, nullptr);
    EXPECT_NE(parsed_.Node(0).channels[1].keys, nullptr);
    EXPECT_STREQ(parsed_.file.GetNextString(), "7");
}

TEST_F(BvhMotion, IsAcceptedWithoutChannelsOrJoints) {
    EXPECT_EQ(parsed_.Parse(bvh_test::kStill), 0);
    EXPECT_EQ(parsed_.Parse("HIERARCHY MOTION Frames: 0 Frame Time: 0.1"), 0);
    EXPECT_EQ(parsed_.Message(), "");
}

TEST_F(BvhMotion, KeepsNumbersThatAreNotFinite) {
    ASSERT_EQ(
        parsed_.Parse("HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 1 Xrotation } MOTION Frames: 4 "
                      "Frame Time: 0.1 nan -inf 1e999 0x10"),
        0);
    const std::vector<double> values = Values(0, 0);
    EXPECT_TRUE(std::isnan(values[0]));
    EXPECT_EQ(values[1], -std::numeric_limits<double>::infinity());
    EXPECT_EQ(values[2], std::numeric_limits<double>::infinity());
    EXPECT_EQ(values[3], 16.0);
}

TEST_F(BvhMotion, ReadsTheLeadingPartOfANumber) {
    ASSERT_EQ(
        parsed_.Parse("HIERARCHY ROOT A { OFFSET 1,5 2m 3 CHANNELS 1x Xrotation } MOTION Frames: "
                      "2abc Frame Time: 0.1s 7deg 8,5"),
        0);
    EXPECT_THAT(parsed_.Node(0).offset, ElementsAre(1, 2, 3));
    EXPECT_THAT(Values(0, 0), ElementsAre(7, 8));
}

}  // namespace
