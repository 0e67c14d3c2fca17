#include "acclaim/amc_key_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/memory/new_operators.h"

namespace {

using support::memoryUse;
using testing::ElementsAre;

std::vector<double> Values(const KeyArray& keys, int count) {
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(keys[static_cast<std::size_t>(i)].value);
    return values;
}

TEST(AmcKeyLists, GiveEachChannelItsColumn) {
    AmcKeyLists lists;
    lists.BeginFrame(5);
    lists.AddChannels(2);
    lists.Append(1);
    lists.Append(2);
    lists.BeginFrame(9);
    lists.Append(3);
    lists.Append(4);
    const auto keys = lists.ReleaseKeys();
    ASSERT_EQ(keys.size(), 2u);
    EXPECT_THAT(Values(keys[0], 2), ElementsAre(1, 3));
    EXPECT_THAT(Values(keys[1], 2), ElementsAre(2, 4));
    EXPECT_EQ(keys[0][0].time, 5.0);
    EXPECT_EQ(keys[1][1].time, 9.0);
}

TEST(AmcKeyLists, FillTheFramesBeforeAChannelBegins) {
    AmcKeyLists lists;
    lists.BeginFrame(-1);
    lists.BeginFrame(1);
    lists.AddChannels(1);
    lists.Append(7);
    lists.BeginFrame(2);
    lists.Append(8);
    lists.AddChannels(2);
    lists.Append(10);
    lists.Append(20);
    const auto keys = lists.ReleaseKeys();
    ASSERT_EQ(keys.size(), 3u);
    EXPECT_THAT(Values(keys[0], 3), ElementsAre(7, 7, 8));
    EXPECT_THAT(Values(keys[1], 3), ElementsAre(10, 10, 10));
    EXPECT_THAT(Values(keys[2], 3), ElementsAre(20, 20, 20));
    EXPECT_EQ(keys[2][0].time, -1.0);
    EXPECT_EQ(keys[2][2].time, 2.0);
}

TEST(AmcKeyLists, AreEmptyWithoutChannels) {
    AmcKeyLists lists;
    EXPECT_TRUE(lists.ReleaseKeys().empty());
}

// A long motion needs far fewer allocations than it has values, and at most two and a half times
// the memory of its keys.
TEST(AmcKeyLists, NeedLittleMoreMemoryThanTheKeys) {
    constexpr int kFrames = 50000;
    constexpr std::uint32_t kChannels = 62;
    constexpr std::size_t kKeys = std::size_t{kFrames} * kChannels;
    const std::size_t before = memoryUse.live;
    memoryUse.peak = before;
    memoryUse.allocations = 0;
    {
        AmcKeyLists lists;
        for (int frame = 1; frame <= kFrames; ++frame) {
            lists.BeginFrame(frame);
            if (frame == 1) lists.AddChannels(kChannels);
            for (std::uint32_t channel = 0; channel < kChannels; ++channel)
                lists.Append(channel);
        }
        const auto keys = lists.ReleaseKeys();
        EXPECT_EQ(keys[61][kFrames - 1].value, 61.0);
    }
    EXPECT_LE(memoryUse.peak - before, kKeys * sizeof(double) * 5 / 2);
    EXPECT_LT(memoryUse.allocations, kKeys / 1000);
    EXPECT_EQ(memoryUse.live, before);
}

}  // namespace
