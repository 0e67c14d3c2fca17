// Compares the vector loops for listed rotations with plain arithmetic.
#include "math/listed_rotations.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

#include "math/listed_kernel.h"
#include "tests/math/kernel_rows.h"
#include "tests/math/some_angles.h"
#include "tests/support/math.h"

namespace listed_rotations_test {

using math::AngleLanes;
using math::kPoseLanes;
using support::Matrix3;
using Cosines = double[kPoseLanes];

std::vector<KernelRow<math::ListedKernel>> Kernels() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    return KernelRows(math::kListedKernelPlain, &math::kListedKernelAvx2);
#else
    return KernelRows<math::ListedKernel>(math::kListedKernelPlain, nullptr);
#endif
}

// Rotations about the first `count` axes; the others are not used.
struct Order {
    const char* name;
    std::array<std::size_t, 3> axes;
    std::size_t count;
};

const Order kOrders[] = {
    {"XYZ", {0, 1, 2}, 3}, {"ZYX", {2, 1, 0}, 3}, {"YZX", {1, 2, 0}, 3}, {"ZXY", {2, 0, 1}, 3},
    {"XYX", {0, 1, 0}, 3}, {"XZ", {0, 2, 0}, 2},  {"Y", {1, 0, 0}, 1},   {"none", {0, 0, 0}, 0},
};

// std::remainder is exact, so that the product is as exact for many turns as for one.
Matrix3 About(std::size_t axis, double degrees) {
    return support::ColumnRotation("xyz"[axis], support::Radians(std::remainder(degrees, 360.0)));
}

Matrix3 Product(const Order& order, const AngleLanes& listed, std::size_t lane) {
    Matrix3 m = support::kIdentity3;
    for (std::size_t i = 0; i < order.count; ++i)
        m = m * About(order.axes[i], listed.angle[i][lane]);
    return m;
}

void Compare(const Order& order, const AngleLanes& listed, const AngleLanes& angles,
             const Cosines& cosines) {
    for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
        const Matrix3 expected = Product(order, listed, lane);
        const double cosine = std::hypot(expected[0][0], expected[1][0]);
        ASSERT_NEAR(cosines[lane], cosine, 1e-14) << lane;
        if (cosine < 1e-13) continue;
        const double x = angles.angle[0][lane];
        const double y = angles.angle[1][lane];
        const double z = angles.angle[2][lane];
        ASSERT_LE(std::abs(x), 180.0);
        ASSERT_LE(std::abs(y), 90.0);
        ASSERT_LE(std::abs(z), 180.0);
        ASSERT_LE(Distance(About(2, z) * About(1, y) * About(0, x), expected), 1e-14) << lane;
    }
}

TEST(ListedRotations, AreThoseOfPlainProducts) {
    for (const auto& row : Kernels())
        for (const Order& order : kOrders)
            for (const double range : {5.0, 200.0, 900.0, 9e8}) {
                SCOPED_TRACE(testing::Message() << row.name << ' ' << order.name << ' ' << range);
                const AngleLanes listed =
                    support::SomeAngles(90.0, range, static_cast<unsigned>(range));
                AngleLanes angles;
                Cosines cosines;
                EXPECT_TRUE(
                    row.kernel->angles(order.axes.data(), order.count, listed, angles, cosines));
                Compare(order, listed, angles, cosines);
            }
}

// The angle about y comes as near to a right angle as a double allows, so that z alone is
// uncertain.
TEST(ListedRotations, AreRightNearGimbalLock) {
    const Order order = {"ZYX", {2, 1, 0}, 3};
    for (const auto& row : Kernels()) {
        AngleLanes listed = support::SomeAngles(90.0, 180.0, 3);
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            listed.angle[1][lane] = 90.0 - std::pow(10.0, -0.2 * static_cast<double>(lane));
        AngleLanes angles;
        Cosines cosines;
        EXPECT_TRUE(row.kernel->angles(order.axes.data(), order.count, listed, angles, cosines));
        SCOPED_TRACE(row.name);
        Compare(order, listed, angles, cosines);
    }
}

struct LargeRow {
    const char* name;
    double angle;
};

class ListedRotationsOfLargeAngles : public testing::TestWithParam<LargeRow> {};

TEST_P(ListedRotationsOfLargeAngles, HaveTheCosineZero) {
    const Order& order = kOrders[0];
    for (std::size_t axis = 0; axis < 3; ++axis) {
        AngleLanes listed = support::SomeAngles(90.0, 90.0, 4);
        listed.angle[axis][5] = GetParam().angle;
        AngleLanes angles;
        Cosines cosines;
        math::AnglesOfListed(order.axes, order.count, listed, angles, cosines);
        EXPECT_EQ(cosines[5], 0.0) << axis;
        EXPECT_GT(cosines[4], 0.0) << axis;
        for (const auto& row : Kernels())
            EXPECT_FALSE(
                row.kernel->angles(order.axes.data(), order.count, listed, angles, cosines))
                << row.name << ' ' << axis;
    }
}

INSTANTIATE_TEST_SUITE_P(
    ListedRotations, ListedRotationsOfLargeAngles,
    testing::Values(LargeRow{"Limit", 1e9}, LargeRow{"Negative", -2e12}, LargeRow{"Huge", 1e300},
                    LargeRow{"Infinite", std::numeric_limits<double>::infinity()},
                    LargeRow{"NotANumber", std::numeric_limits<double>::quiet_NaN()}),
    [](const auto& row) { return row.param.name; });

}  // namespace listed_rotations_test
