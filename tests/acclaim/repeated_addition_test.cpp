// Compares AddRepeatedly with a plain loop of additions, bit for bit.
#include "acclaim/repeated_addition.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <random>

namespace repeated_addition_test {

double AddOneByOne(double sum, double term, std::size_t times) {
    for (; times > 0; --times)
        sum += term;
    return sum;
}

::testing::AssertionResult EqualsLoop(double sum, double term, std::size_t times) {
    const double expected = AddOneByOne(sum, term, times);
    const double found = AddRepeatedly(sum, term, times);
    // The sign of a NaN result depends on the processor.
    if (std::isnan(expected) && std::isnan(found)) return ::testing::AssertionSuccess();
    if (std::bit_cast<std::uint64_t>(expected) == std::bit_cast<std::uint64_t>(found))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::hexfloat << sum << " + " << times << " * " << term
                                         << " is " << expected << ", not " << found;
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

struct Row {
    const char* name;
    double sum;
    double term;
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"FromZero", 0.0, 0.1},
    {"Downwards", 0.0, -0.3},
    {"ThroughZero", -100.0, 0.7},
    {"Exact", 3.0, 0.25},
    {"Nothing", 1.5, 0.0},
    {"NegativeZero", -0.0, -0.0},
    {"BothZeros", -0.0, 0.0},
    {"TooSmallToMove", 1e300, 1.0},
    {"HalfWayFromEven", 0x1p53, 1.0},
    {"HalfWayFromOdd", 0x1p53 + 2.0, 1.0},
    {"HalfWayAndAWhole", 0x1p53 + 2.0, 3.0},
    {"HalfWayBackwards", 0x1p54, -1.0},
    {"HalfWayFromBelow", 0x1p53 - 1.0, 1.0},
    {"NearlyHalfWay", 0x1p53, 0x1.fffffffffffffp-1},
    {"SmallestNumbers", 0.0, kTiny},
    {"IntoSmallestNumbers", 100 * kTiny, -3 * kTiny},
    {"Overflow", kLargest / 4, kLargest / 1000},
    {"NearlyOverflow", 0.0, kLargest / 200000},
    {"Infinite", 1.0, kInfinity},
    {"InfiniteAlready", kInfinity, -1.0},
    {"NanAsResult", kInfinity, -kInfinity},
    {"NanAsSum", std::nan(""), 1.0},
    {"NanAsTerm", 1.0, std::nan("")},
};

class RepeatedAddition : public testing::TestWithParam<Row> {};

TEST_P(RepeatedAddition, EqualsTheLoop) {
    for (std::size_t times = 0; times < 200; ++times)
        ASSERT_TRUE(EqualsLoop(GetParam().sum, GetParam().term, times));
    ASSERT_TRUE(EqualsLoop(GetParam().sum, GetParam().term, 100000));
}

INSTANTIATE_TEST_SUITE_P(, RepeatedAddition, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

// Terms of any size compared with the sum. Additions of terms with many digits are rounded; those
// of terms with few digits often end half way between two doubles.
TEST(AnyRepeatedAddition, EqualsTheLoop) {
    std::mt19937_64 random(20);
    const auto number = [&random](int lowest, int range) {
        const auto digits = static_cast<int>(random() % 53);
        const double whole = 1.0 + static_cast<double>((random() >> 12) >> (52 - digits));
        const int exponent = lowest + static_cast<int>(random() % static_cast<unsigned>(range));
        return std::ldexp(random() % 2 == 0 ? whole : -whole, exponent - digits);
    };
    for (int i = 0; i < 100000; ++i) {
        const double sum = i % 5 == 0 ? 0.0 : number(-2, 60);
        ASSERT_TRUE(EqualsLoop(sum, number(-20, 40), random() % 1000));
    }
}

// A plain loop would take hours.
TEST(AnyRepeatedAddition, IsFastForManyAdditions) {
    EXPECT_EQ(AddRepeatedly(0.0, 1.0, std::size_t{1} << 45), 0x1p45);
    EXPECT_EQ(AddRepeatedly(0.0, 1.0, std::size_t{1} << 60), 0x1p53);
    EXPECT_EQ(AddRepeatedly(-0x1p40, 0.5, std::size_t{1} << 41), 0.0);
}

}  // namespace repeated_addition_test
