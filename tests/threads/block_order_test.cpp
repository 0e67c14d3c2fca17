#include "threads/block_order.h"

#include <gtest/gtest.h>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using threads::BlockOrder;

struct BlockOrderCase {
    const char* name;
    std::size_t blocks;
    std::size_t threads;
};

class EveryNumberOfThreads : public testing::TestWithParam<BlockOrderCase> {
  protected:
    std::vector<std::size_t> Expected() const {
        std::vector<std::size_t> blocks(GetParam().blocks);
        std::iota(blocks.begin(), blocks.end(), 0);
        return blocks;
    }
};

// Both steps see the blocks in order, and the first step of a block comes before its second one.
TEST_P(EveryNumberOfThreads, DoesTheStepsInOrder) {
    BlockOrder order(2);
    std::vector<std::size_t> first;
    std::vector<std::size_t> second;
    std::vector<int> calls(GetParam().blocks);
    order.Run(GetParam().blocks, GetParam().threads, [&](std::size_t thread, std::size_t block) {
        EXPECT_LT(thread, GetParam().threads);
        ++calls[block];
        order.InOrder(0, block, [&] { first.push_back(block); });
        order.InOrder(1, block, [&] {
            EXPECT_LT(second.size(), first.size());
            second.push_back(block);
        });
    });
    EXPECT_EQ(first, Expected());
    EXPECT_EQ(second, Expected());
    EXPECT_EQ(calls, std::vector<int>(GetParam().blocks, 1));
}

// Whichever thread is faster, the first block that throws is reported, and all before it are done.
TEST_P(EveryNumberOfThreads, PassesOnTheFirstException) {
    for (std::size_t failing = 0; failing < GetParam().blocks; ++failing) {
        BlockOrder order(1);
        std::vector<std::size_t> done;
        try {
            order.Run(GetParam().blocks, GetParam().threads, [&](std::size_t, std::size_t block) {
                if (block >= failing) throw std::runtime_error(std::to_string(block));
                order.InOrder(0, block, [&] { done.push_back(block); });
            });
            ADD_FAILURE() << "nothing is thrown";
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), std::to_string(failing));
        }
        EXPECT_EQ(done.size(), failing);
    }
}

// What a step throws stops the blocks that wait for it.
TEST_P(EveryNumberOfThreads, StopsAfterAStepThatThrows) {
    for (std::size_t failing = 0; failing < GetParam().blocks; ++failing) {
        BlockOrder order(1);
        std::size_t done = 0;
        EXPECT_THROW(order.Run(GetParam().blocks, GetParam().threads,
                               [&](std::size_t, std::size_t block) {
                                   order.InOrder(0, block, [&] {
                                       if (block == failing) throw std::runtime_error("full");
                                       ++done;
                                   });
                               }),
                     std::runtime_error);
        EXPECT_EQ(done, failing);
    }
}

INSTANTIATE_TEST_SUITE_P(BlockOrder, EveryNumberOfThreads,
                         testing::Values(BlockOrderCase{"None", 0, 1}, BlockOrderCase{"One", 1, 1},
                                         BlockOrderCase{"OneThread", 20, 1},
                                         BlockOrderCase{"TwoThreads", 100, 2},
                                         BlockOrderCase{"FiveThreads", 100, 5},
                                         BlockOrderCase{"MoreThreadsThanBlocks", 3, 8}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
