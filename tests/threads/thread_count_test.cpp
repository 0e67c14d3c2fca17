#include "threads/thread_count.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sched.h>

namespace thread_count_test {
namespace {

struct Row {
    const char* name;
    const char* variable;  // null: not set
    std::size_t count;     // for so much work that all processors are used; 0: all of them
};
void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    {"NotSet", nullptr, 0},
    {"Empty", "", 0},
    {"One", "1", 1},
    {"Seven", "7", 7},
    {"MoreThanAreUsed", "1000", 32},
    {"TooMany", "1001", 0},
    {"Zero", "0", 0},
    {"Negative", "-2", 0},
    {"Word", "two", 0},
    {"Fraction", "2.5", 0},
    {"Blank", " 2", 0},
    {"Huge", "99999999999999999999", 0},
};

class ThreadCountOf : public testing::TestWithParam<Row> {
  protected:
    void TearDown() override { unsetenv(threads::kVariable); }
};

TEST_P(ThreadCountOf, IsThatOfTheVariableOrOfTheProcessors) {
    unsetenv(threads::kVariable);
    if (GetParam().variable) setenv(threads::kVariable, GetParam().variable, 1);
    cpu_set_t allowed;
    ASSERT_EQ(sched_getaffinity(0, sizeof allowed, &allowed), 0);
    const auto all = static_cast<std::size_t>(std::min(CPU_COUNT(&allowed), 32));
    EXPECT_EQ(threads::Most(), GetParam().count == 0 ? all : GetParam().count);
    EXPECT_EQ(threads::CountFor(std::uint64_t{1} << 32),
              GetParam().count == 0 ? all : GetParam().count);
    EXPECT_EQ(threads::CountFor(0), GetParam().count == 0 ? 1 : GetParam().count);
    EXPECT_EQ(threads::CountFor(1000000), GetParam().count == 0 ? 1 : GetParam().count);
}

TEST(ThreadCount, IsThatOfTheProcessorsThatTheProcessMayUse) {
    unsetenv(threads::kVariable);
    cpu_set_t allowed;
    ASSERT_EQ(sched_getaffinity(0, sizeof allowed, &allowed), 0);
    std::size_t processor = 0;
    while (!CPU_ISSET(processor, &allowed))
        ++processor;
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(processor, &one);
    ASSERT_EQ(sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(threads::Most(), 1U);
    EXPECT_EQ(threads::CountFor(std::uint64_t{1} << 32), 1U);
    ASSERT_EQ(sched_setaffinity(0, sizeof allowed, &allowed), 0);
}

INSTANTIATE_TEST_SUITE_P(, ThreadCountOf, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace thread_count_test
