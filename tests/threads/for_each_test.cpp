#include "threads/for_each.h"

#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <vector>

namespace for_each_test {
namespace {

struct Row {
    std::size_t count;
    std::size_t threads;
};

const Row kRows[] = {{0, 1}, {0, 4}, {1, 4}, {2, 2}, {1000, 1}, {1000, 3}, {5, 100}};

class ForEach : public testing::TestWithParam<Row> {};

TEST_P(ForEach, CallsTheWorkOnceForEachIndex) {
    std::vector<int> calls(GetParam().count);
    threads::ForEach(GetParam().count, GetParam().threads,
                     [&](std::size_t index) { ++calls[index]; });
    EXPECT_EQ(std::count(calls.begin(), calls.end(), 1),
              static_cast<std::ptrdiff_t>(GetParam().count));
}

TEST_P(ForEach, BeginsTheCallsInTheirOrder) {
    const std::size_t count = GetParam().count;
    std::vector<std::atomic<bool>> hasBegun(count);
    threads::ForEach(count, GetParam().threads, [&](std::size_t index) {
        hasBegun[index] = true;
        // A call may wait for the one before, which another thread runs.
        while (index > 0 && !hasBegun[index - 1])
            continue;
    });
    EXPECT_TRUE(
        std::all_of(hasBegun.begin(), hasBegun.end(), [](const auto& has) { return has.load(); }));
}

INSTANTIATE_TEST_SUITE_P(, ForEach, testing::ValuesIn(kRows));

}  // namespace
}  // namespace for_each_test
