#include "threads/for_each.h"

#include <algorithm>
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

INSTANTIATE_TEST_SUITE_P(, ForEach, testing::ValuesIn(kRows));

}  // namespace
}  // namespace for_each_test
