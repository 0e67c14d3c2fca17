// Angles and matrices.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "headless/transform.h"
#include "tests/headless/matrix_walk.h"

using headless::AnglesOf;
using headless::FromLocal;
using headless::Inverse;
using headless::Transform;
using host_test::OfLocal;
using host_test::OfTransform;
using testing::ElementsAre;

namespace {

// The difference between a matrix and the one that is computed from its angles.
double Error(const Transform& transform) {
    const auto [x, y, z] = AnglesOf(transform.axes);
    return support::Distance(FromLocal({0, 0, 0, x, y, z}).axes, transform.axes);
}

TEST(Angles, ReproduceAnyMatrix) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> angle(-360, 360);
    double largest = 0.0;
    for (int count = 0; count < 200'000; ++count)
        largest = std::max(
            largest, Error(FromLocal({0, 0, 0, angle(random), angle(random), angle(random)})));
    EXPECT_LE(largest, 1e-15);
}

TEST(Angles, ReproduceMatricesAtAndNearGimbalLock) {
    std::mt19937 random(2);
    std::uniform_real_distribution<double> angle(-360, 360);
    double largest = 0.0;
    for (const double lock : {90.0, -90.0, 270.0})
        for (const double away : {0.0, 1e-15, 1e-13, 1e-11, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-3})
            for (const double sign : {1.0, -1.0})
                for (int count = 0; count < 1000; ++count)
                    largest =
                        std::max(largest, Error(FromLocal({0, 0, 0, angle(random),
                                                           lock + sign * away, angle(random)})));
    EXPECT_LE(largest, 1e-15);
}

// The exact angle is computed with long double, where that is longer than double. Only the angle
// about z can be checked this way, because it depends on two entries of the matrix alone.
TEST(Angles, AreTheNearestDoubles) {
    if constexpr (std::numeric_limits<long double>::digits < 64) GTEST_SKIP();
    constexpr long double kDegreesPerRadian = 57.295779513082320876798154814105170L;
    std::mt19937 random(6);
    std::uniform_real_distribution<double> angle(-180, 180);
    int others = 0;
    constexpr int kCount = 100'000;
    for (int count = 0; count < kCount; ++count) {
        const Transform turned =
            FromLocal({0, 0, 0, angle(random), angle(random) / 2, angle(random)});
        const long double exact =
            kDegreesPerRadian * std::atan2(static_cast<long double>(turned.axes[0][1]),
                                           static_cast<long double>(turned.axes[0][0]));
        const double z = AnglesOf(turned.axes)[2];
        if (z != static_cast<double>(exact)) ++others;
        const double ulp = std::nextafter(std::fabs(z), 400.0) - std::fabs(z);
        ASSERT_LE(std::fabs(static_cast<long double>(z) - exact), 0.501L * ulp);
    }
    // The angles that are nearly half-way between two doubles.
    EXPECT_LE(others, kCount / 1000);
}

TEST(Angles, ReproduceEveryQuarterTurn) {
    for (int x = -4; x <= 4; ++x)
        for (int y = -4; y <= 4; ++y)
            for (int z = -4; z <= 4; ++z) {
                const Transform turned = FromLocal({0, 0, 0, 90.0 * x, 90.0 * y, 90.0 * z});
                EXPECT_EQ(Error(turned), 0.0) << x << ' ' << y << ' ' << z;
            }
}

TEST(Angles, AreExactForSingleQuarterTurns) {
    const double plain[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (const double angle : AnglesOf(plain)) {
        EXPECT_EQ(angle, 0.0);
        EXPECT_FALSE(std::signbit(angle));
    }
    EXPECT_THAT(AnglesOf(FromLocal({0, 0, 0, 90, 0, 0}).axes), ElementsAre(90, 0, 0));
    EXPECT_THAT(AnglesOf(FromLocal({0, 0, 0, 0, 90, 0}).axes), ElementsAre(0, 90, 0));
    EXPECT_THAT(AnglesOf(FromLocal({0, 0, 0, 0, 0, -90}).axes), ElementsAre(0, 0, -90));
    EXPECT_THAT(AnglesOf(FromLocal({0, 0, 0, 20, 90, 0}).axes)[1], 90.0);
}

TEST(Angles, ReproduceMatricesWithRoundingErrors) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> angle(-180, 180);
    std::uniform_int_distribution<int> step(-2, 2);
    double largest = 0.0;
    for (int count = 0; count < 100'000; ++count) {
        const double middle = count % 2 == 0 ? 90.0 : angle(random);
        Transform transform = FromLocal({0, 0, 0, angle(random), middle, angle(random)});
        double touched = 0.0;
        for (auto& row : transform.axes)
            for (double& entry : row) {
                const double change = step(random) * 1.1e-16;
                entry += change;
                touched = std::max(touched, std::fabs(change));
            }
        // Angles can only reproduce a rotation, which the changed matrix is not quite.
        largest = std::max(largest, Error(transform) - 4 * touched);
    }
    EXPECT_LE(largest, 1e-15);
}

TEST(Angles, ThatAreNotFiniteGiveNaN) {
    const double kNan = std::numeric_limits<double>::quiet_NaN();
    for (const double bad : {kNan, std::numeric_limits<double>::infinity()})
        EXPECT_TRUE(std::isnan(FromLocal({0, 0, 0, bad, 0, 0}).axes[1][1]));
}

TEST(Transforms, AreTheProductOfThreeTurns) {
    std::mt19937 random(4);
    std::uniform_real_distribution<double> number(-400, 400);
    for (int count = 0; count < 1000; ++count) {
        const std::array<double, 6> local = {number(random), number(random), number(random),
                                             number(random), number(random), number(random)};
        EXPECT_LT(Distance(OfTransform(FromLocal(local)), OfLocal(local)), 5e-15);
    }
}

TEST(Transforms, RotateAboutXFirst) {
    // The rotation about x turns y to z. The rotation about z, which follows, leaves it there.
    const Transform turned = FromLocal({1, 2, 3, 90, 0, 90});
    EXPECT_THAT(turned.axes[1], ElementsAre(0, 0, 1));
    EXPECT_THAT(turned.axes[0], ElementsAre(0, 1, 0));
    EXPECT_THAT(turned.origin, ElementsAre(1, 2, 3)) << "the translation comes last";
}

TEST(Transforms, OfHugeAnglesAreThoseOfTheirRemainder) {
    for (const double turns : {1.0, -1.0, 1e3, 1e6, 1e12})
        EXPECT_LT(support::Distance(FromLocal({0, 0, 0, 30 + 360 * turns, 0, 0}).axes,
                                    FromLocal({0, 0, 0, 30, 0, 0}).axes),
                  1e-15)
            << turns;
    EXPECT_TRUE(std::isfinite(FromLocal({0, 0, 0, 1e300, 1e300, 1e300}).axes[0][0]));
}

TEST(Transforms, ActInTheOrderOfTheProduct) {
    const Transform moved = FromLocal({1, 0, 0, 0, 0, 0});
    const Transform turned = FromLocal({0, 0, 0, 0, 0, 90});
    EXPECT_THAT((moved * turned).origin, ElementsAre(0, 1, 0));
    EXPECT_THAT((turned * moved).origin, ElementsAre(1, 0, 0));
}

TEST(Transforms, AreUndoneByTheirInverse) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> number(-100, 100);
    for (int count = 0; count < 1000; ++count) {
        const Transform transform = FromLocal({number(random), number(random), number(random),
                                               number(random), number(random), number(random)});
        EXPECT_LT(Distance(OfTransform(transform * Inverse(transform)), OfLocal({})), 1e-13);
        EXPECT_LT(Distance(OfTransform(Inverse(transform) * transform), OfLocal({})), 1e-13);
    }
}

}  // namespace
