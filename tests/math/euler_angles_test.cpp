#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <ostream>
#include <random>

#include "math/angles.h"
#include "math/rotation_math.h"
#include "tests/support/math.h"

namespace {

using support::Matrix4;

struct Angles {
    double x = 0.0, y = 0.0, z = 0.0;
};

Matrix4 MatrixOf(const Angles& angles) {
    Matrix4 matrix;
    MatrixRotationXYZ(matrix.m, angles.x, angles.y, angles.z);
    return matrix;
}

Angles AnglesOf(const Matrix4& matrix) {
    Angles angles;
    MatrixGetEulerAngles(matrix.m, angles.x, angles.y, angles.z);
    return angles;
}

struct ArcRow {
    const char* name;
    double sine, cosine;
    double angle;
};
std::ostream& operator<<(std::ostream& out, const ArcRow& row) {
    return out << row.name;
}

// The largest cosine for which acos is used, and the next double.
const double kLimit = std::bit_cast<double>(std::uint64_t{0x3FE6A09E6B3A8B97});
const double kAboveLimit = std::nextafter(kLimit, 1.0);

const ArcRow kArcRows[] = {
    {"SineWhereTheCosineIsLarge", 0.5, 0.9, std::asin(0.5)},
    {"NegativeSine", -0.5, 0.9, std::asin(-0.5)},
    {"SineOnTheLeft", 0.5, -0.9, math::kPi - std::asin(0.5)},
    {"NegativeSineOnTheLeft", -0.5, -0.9, -math::kPi - std::asin(-0.5)},
    {"CosineWhereItIsSmall", 0.9, 0.3, std::acos(0.3)},
    {"CosineBelow", -0.9, 0.3, -std::acos(0.3)},
    {"NegativeCosine", 0.9, -0.3, std::acos(-0.3)},
    {"NegativeCosineBelow", -0.9, -0.3, -std::acos(-0.3)},
    {"AtTheLimit", 0.1, kLimit, std::acos(kLimit)},
    {"AtTheNegativeLimit", 0.1, -kLimit, std::acos(-kLimit)},
    {"AboveTheLimit", 0.1, kAboveLimit, std::asin(0.1)},
    {"BelowTheNegativeLimit", 0.1, -kAboveLimit, math::kPi - std::asin(0.1)},
    {"CosineTooLarge", 0.2, 1.5, std::asin(0.2)},
    {"CosineTooSmall", 0.2, -1.5, math::kPi - std::asin(0.2)},
    {"BothOutside", 2.0, -3.0, math::kPi - std::asin(1.0)},
    {"BothOutsideBelow", -2.0, -3.0, -math::kPi - std::asin(-1.0)},
    {"SineTooLarge", 2.0, 0.3, std::acos(0.3)},
    {"SineTooSmall", -2.0, 0.3, -std::acos(0.3)},
    {"Nothing", 0.0, 1.0, 0.0},
    {"HalfTurn", 0.0, -1.0, -math::kPi},
    {"MinusZeroSine", -0.0, 0.5, std::acos(0.5)},
    {"MinusZeroSineOnTheLeft", -0.0, -1.0, -math::kPi},
    {"QuarterTurn", 1.0, 0.0, std::acos(0.0)},
    {"NegativeQuarterTurn", -1.0, 0.0, -std::acos(0.0)},
    {"MinusZeroCosine", 1.0, -0.0, std::acos(-0.0)},
};

class ArcSinCosTable : public testing::TestWithParam<ArcRow> {};

TEST_P(ArcSinCosTable, UsesTheBetterConditionedOfTheTwo) {
    EXPECT_EQ(arcSinCos(GetParam().sine, GetParam().cosine), GetParam().angle);
}

INSTANTIATE_TEST_SUITE_P(, ArcSinCosTable, testing::ValuesIn(kArcRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(ArcSinCos, GivesTheAngleAllTheWayRound) {
    for (int i = -1000; i <= 1000; ++i) {
        const double angle = i * math::kPi / 1000.0;
        const double found = arcSinCos(std::sin(angle), std::cos(angle));
        EXPECT_LE(std::fabs(std::remainder(found - angle, 2.0 * math::kPi)), 1e-15 * 4) << angle;
        EXPECT_LE(std::fabs(found), math::kPi);
    }
}

TEST(EulerAngles, OfTheIdentityAreAllMinusPi) {
    const Angles angles = AnglesOf(MatrixOf({0, 0, 0}));
    EXPECT_EQ(angles.x, -math::kPi);
    EXPECT_EQ(angles.y, -math::kPi);
    EXPECT_EQ(angles.z, -math::kPi);
}

TEST(EulerAngles, AreTheSecondOfTheTwoSolutions) {
    const Angles angles = AnglesOf(MatrixOf({0.1, 0.2, 0.3}));
    EXPECT_NEAR(angles.x, 0.1 - math::kPi, 1e-15);
    EXPECT_NEAR(angles.y, math::kPi - 0.2, 1e-15);
    EXPECT_NEAR(angles.z, 0.3 - math::kPi, 1e-15);
    const Angles below = AnglesOf(MatrixOf({0.1, -0.2, 0.3}));
    EXPECT_NEAR(below.y, -math::kPi + 0.2, 1e-15);
}

// Angles on a grid of eighths of a turn, right angles included.
TEST(EulerAngles, ReproduceTheMatrixOnAGrid) {
    for (int x = -8; x <= 8; ++x)
        for (int y = -8; y <= 8; ++y)
            for (int z = -8; z <= 8; ++z) {
                const Matrix4 m =
                    MatrixOf({x * math::kPi / 8, y * math::kPi / 8, z * math::kPi / 8});
                const Angles back = AnglesOf(m);
                ASSERT_LE(Distance(MatrixOf(back), m), 1e-11) << x << ' ' << y << ' ' << z;
                ASSERT_GE(std::fabs(back.y), math::kPi / 2 - 1e-7);
            }
}

// Near a right angle the error of the pitch, which is computed from its sine, is about an ulp
// divided by its cosine. The other angles are divided by that cosine, too. So the error grows with
// the inverse square of the cosine, down to the threshold below which the free angle is shared.
TEST(EulerAngles, ReproduceTheMatrixOfAnyAngles) {
    std::mt19937_64 random(5);
    const auto angle = [&random] {
        return (static_cast<double>(random() % 2'000'001) / 1e6 - 1.0) * 7.0;
    };
    for (int i = 0; i < 20'000; ++i) {
        const Angles angles{angle(), angle(), angle()};
        const double cosine = std::cos(angles.y);
        const Matrix4 m = MatrixOf(angles);
        ASSERT_LE(Distance(MatrixOf(AnglesOf(m)), m), 2e-15 + 1e-15 / (cosine * cosine));
    }
}

TEST(EulerAngles, AtGimbalLockShareTheFreeAngle) {
    for (const double x : {0.0, 0.4, -2.0}) {
        for (const double z : {0.0, 0.9, -1.5}) {
            const Angles up = AnglesOf(MatrixOf({x, math::kPi / 2, z}));
            EXPECT_EQ(up.x, -up.z);
            EXPECT_NEAR(up.y, math::kPi / 2, 1e-8);
            EXPECT_LE(Distance(MatrixOf(up), MatrixOf({x, math::kPi / 2, z})), 1e-11);
            const Angles down = AnglesOf(MatrixOf({x, -math::kPi / 2, z}));
            EXPECT_EQ(down.x, down.z);
            EXPECT_NEAR(down.y, -math::kPi / 2, 1e-8);
            EXPECT_LE(Distance(MatrixOf(down), MatrixOf({x, -math::kPi / 2, z})), 1e-11);
        }
    }
}

// The free angle is shared if the pitch's cosine is below the threshold, and not if it is above.
TEST(EulerAngles, ShareTheFreeAngleWithinTheThreshold) {
    const double threshold = std::bit_cast<double>(std::uint64_t{0x3EE4F8B588E368F1});
    EXPECT_EQ(threshold, 1e-5);
    const Angles inside = AnglesOf(MatrixOf({0.7, math::kPi / 2 - 0.9e-5, 0.1}));
    EXPECT_EQ(inside.x, -inside.z);
    const Angles outside = AnglesOf(MatrixOf({0.7, math::kPi / 2 - 1.1e-5, 0.1}));
    EXPECT_NE(outside.x, -outside.z);
}

TEST(EulerAngles, SurviveAMatrixThatIsNoRotation) {
    Matrix4 m = {{{0, 0, 5, 0}, {9, 9, 9, 0}, {9, 9, 9, 0}, {0, 0, 0, 1}}};
    EXPECT_EQ(AnglesOf(m).y, -math::kPi - std::asin(-1.0));
    m.m[0][2] = -5;
    EXPECT_EQ(AnglesOf(m).y, math::kPi - std::asin(1.0));
}

// --- RotationToXYZ ---

struct OrderRow {
    const char* name;
    const char* order;
    // The expected product: the rotation about axes[0] by the angle angleIndexes[0] acts first. The
    // axis 'I' is no rotation.
    const char* axes;
    int angleIndexes[3];
};
std::ostream& operator<<(std::ostream& out, const OrderRow& row) {
    return out << row.name;
}

const OrderRow kOrderRows[] = {
    {"XYZ", "XYZ", "ZYX", {2, 1, 0}},
    {"LowerCase", "xyz", "ZYX", {2, 1, 0}},
    {"ZYX", "ZYX", "XYZ", {2, 1, 0}},
    {"MixedCase", "yXz", "ZXY", {2, 1, 0}},
    {"XZY", "XZY", "YZX", {2, 1, 0}},
    {"Repeated", "XXY", "YXX", {2, 1, 0}},
    {"UnknownInTheMiddleRepeats", "XQZ", "ZXX", {2, 0, 0}},
    {"UnknownLastRepeats", "XY?", "YYX", {1, 1, 0}},
    {"UnknownTwiceRepeatsTheFirst", "X--", "XXX", {0, 0, 0}},
    {"UnknownFirstIsNothing", "?YZ", "ZYI", {2, 1, 0}},
    {"UnknownAlone", "abc", "III", {0, 0, 0}},
    {"MoreThanThreeAreNotRead", "ZYXX", "XYZ", {2, 1, 0}},
};

class RotationOrderTable : public testing::TestWithParam<OrderRow> {};

TEST_P(RotationOrderTable, TurnsTheLastNamedFirst) {
    const OrderRow& row = GetParam();
    const double angles[3] = {0.4, -1.1, 2.3};
    Matrix4 all;
    MatrixIdentity(all.m);
    for (int i = 0; i < 3; ++i) {
        Matrix4 turn, product;
        const double angle = angles[row.angleIndexes[i]];
        MatrixIdentity(turn.m);
        if (row.axes[i] == 'X') MatrixRotationX(turn.m, angle);
        if (row.axes[i] == 'Y') MatrixRotationY(turn.m, angle);
        if (row.axes[i] == 'Z') MatrixRotationZ(turn.m, angle);
        MatrixMult(all.m, turn.m, product.m);
        all = product;
    }
    Angles found;
    RotationToXYZ(angles, row.order, found.x, found.y, found.z);
    // The rotation is the same up to the rounding error of computing the angles.
    EXPECT_LE(Distance(MatrixOf(found), all), 1e-11);
}

INSTANTIATE_TEST_SUITE_P(, RotationOrderTable, testing::ValuesIn(kOrderRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RotationOrder, IgnoresLetterCase) {
    const double angles[3] = {0.4, -1.1, 2.3};
    Angles upper, lower;
    RotationToXYZ(angles, "ZXY", upper.x, upper.y, upper.z);
    RotationToXYZ(angles, "zxy", lower.x, lower.y, lower.z);
    EXPECT_EQ(std::memcmp(&upper, &lower, sizeof(upper)), 0);
}

}  // namespace
