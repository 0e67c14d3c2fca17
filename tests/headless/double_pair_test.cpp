// Pairs of doubles, and the directions that are computed with them.
#include "headless/double_pair.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "headless/direction.h"

using headless::DirectionInDegrees;
using headless::DoublePair;

namespace {

TEST(DoublePair, IsExactForASum) {
    const DoublePair sum = headless::ExactSum(1.0, 0x1p-80);
    EXPECT_EQ(sum.high, 1.0);
    EXPECT_EQ(sum.low, 0x1p-80);
}

TEST(DoublePair, IsExactForAProduct) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> factor(-2, 2);
    for (int count = 0; count < 10'000; ++count) {
        const double a = factor(random);
        const double b = factor(random);
        EXPECT_EQ(headless::Product(a, b).low, std::fma(a, b, -(a * b)));
    }
}

TEST(DoublePair, KeepsTheSignOfAZero) {
    const DoublePair zero = {-0.0, 0.0};
    EXPECT_TRUE(std::signbit(headless::Sum(zero, zero).high));
    EXPECT_TRUE(std::signbit(headless::Product(zero, 1.0).high));
    EXPECT_FALSE(std::signbit(headless::Sum(zero, {0.0, 0.0}).high));
}

// The results have nearly twice as many digits as a double.
TEST(DoublePair, DividesAndComputesRoots) {
    const DoublePair third = headless::Quotient({1.0, 0.0}, {3.0, 0.0});
    EXPECT_EQ(third.high, 1.0 / 3.0);
    EXPECT_NEAR(third.low, std::fma(-3.0, third.high, 1.0) / 3.0, 1e-32);
    const DoublePair root = headless::SquareRoot({2.0, 0.0});
    EXPECT_EQ(root.high, std::sqrt(2.0));
    EXPECT_NEAR(root.low, std::fma(-root.high, root.high, 2.0) / (2.0 * root.high), 1e-32);
}

struct DirectionRow {
    double sine, cosine, degrees;
};

TEST(Direction, IsExactOnTheAxes) {
    for (const DirectionRow& row : {DirectionRow{0.0, 1.0, 0.0},
                                    {-0.0, 1.0, -0.0},
                                    {1.0, 0.0, 90.0},
                                    {1.0, -0.0, 90.0},
                                    {-1.0, 0.0, -90.0},
                                    {0.0, -1.0, 180.0},
                                    {-0.0, -1.0, -180.0},
                                    {0.0, 0.0, 0.0},
                                    {0.0, -0.0, 180.0},
                                    {0x1p-20, 0x1p-20, 45.0},
                                    {-3.0, -3.0, -135.0}}) {
        const DoublePair angle = DirectionInDegrees({row.sine, 0.0}, {row.cosine, 0.0});
        EXPECT_EQ(angle.high, row.degrees) << row.sine << ' ' << row.cosine;
        EXPECT_EQ(std::signbit(angle.high), std::signbit(row.degrees));
        EXPECT_EQ(angle.low, 0.0);
    }
}

TEST(Direction, HasAnAnswerForAnyNumbers) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(DirectionInDegrees({kNan, 0.0}, {1.0, 0.0}).high));
    EXPECT_TRUE(std::isnan(DirectionInDegrees({1.0, 0.0}, {kNan, 0.0}).high));
    EXPECT_EQ(DirectionInDegrees({kInfinity, 0.0}, {1.0, 0.0}).high, 90.0);
    EXPECT_NEAR(DirectionInDegrees({1e300, 0.0}, {1e300, 0.0}).high, 45.0, 1e-13);
    EXPECT_NEAR(DirectionInDegrees({1e-300, 0.0}, {1e-300, 0.0}).high, 45.0, 1e-13);
}

}  // namespace
