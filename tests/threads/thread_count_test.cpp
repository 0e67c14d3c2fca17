#include "threads/thread_count.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <thread>

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
    {"NotSet", nullptr, 0}, {"Empty", "", 0},       {"One", "1", 1},
    {"Seven", "7", 7},      {"Most", "1000", 1000}, {"TooMany", "1001", 0},
    {"Zero", "0", 0},       {"Negative", "-2", 0},  {"Word", "two", 0},
    {"Fraction", "2.5", 0}, {"Blank", " 2", 0},     {"Huge", "99999999999999999999", 0},
};

class ThreadCount : public testing::TestWithParam<Row> {
  protected:
    void TearDown() override { unsetenv(threads::kVariable); }
};

TEST_P(ThreadCount, IsThatOfTheVariableOrOfTheProcessors) {
    unsetenv(threads::kVariable);
    if (GetParam().variable) setenv(threads::kVariable, GetParam().variable, 1);
    const std::size_t all = std::max(1U, std::thread::hardware_concurrency());
    EXPECT_EQ(threads::Most(), GetParam().count == 0 ? all : GetParam().count);
    EXPECT_EQ(threads::CountFor(std::uint64_t{1} << 32),
              GetParam().count == 0 ? all : GetParam().count);
    EXPECT_EQ(threads::CountFor(0), GetParam().count == 0 ? 1 : GetParam().count);
    EXPECT_EQ(threads::CountFor(1000000), GetParam().count == 0 ? 1 : GetParam().count);
}

INSTANTIATE_TEST_SUITE_P(, ThreadCount, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace thread_count_test
