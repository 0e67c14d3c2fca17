// Compares the vector loops for poses with plain arithmetic.
#include "math/pose_lanes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "math/angle_kernel.h"
#include "math/pose_kernel.h"
#include "tests/math/kernel_rows.h"
#include "tests/math/some_angles.h"

namespace pose_lanes_test {

using math::AngleLanes;
using math::kPoseLanes;
using math::PoseLanes;
using Quaternion = std::array<double, 4>;
using Point = std::array<double, 3>;

std::vector<KernelRow<math::PoseKernel>> Kernels() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    return KernelRows(math::kPoseKernelPlain, &math::kPoseKernelAvx2);
#else
    return KernelRows<math::PoseKernel>(math::kPoseKernelPlain, nullptr);
#endif
}

Quaternion RotationOf(const PoseLanes& pose, std::size_t lane) {
    return {pose.rotation[0][lane], pose.rotation[1][lane], pose.rotation[2][lane],
            pose.rotation[3][lane]};
}

Point PositionOf(const PoseLanes& pose, std::size_t lane) {
    return {pose.position[0][lane], pose.position[1][lane], pose.position[2][lane]};
}

PoseLanes SomePoses(unsigned seed) {
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> any(-9.0, 9.0);
    PoseLanes pose;
    math::TurnByAngles(support::SomeAngles(45.0, 400.0, seed), pose);
    for (auto& lanes : pose.position)
        for (double& coordinate : lanes)
            coordinate = any(random);
    return pose;
}

// The distance to the nearer one of the two quaternions of a rotation.
double Distance(const Quaternion& a, const Quaternion& b) {
    double same = 0.0;
    double other = 0.0;
    for (std::size_t part = 0; part < 4; ++part) {
        same = std::max(same, std::abs(a[part] - b[part]));
        other = std::max(other, std::abs(a[part] + b[part]));
    }
    return std::min(same, other);
}

// The product that turns by `second` after `first`.
Quaternion Product(const Quaternion& second, const Quaternion& first) {
    const auto& [ax, ay, az, aw] = second;
    const auto& [bx, by, bz, bw] = first;
    return {aw * bx + ax * bw + ay * bz - az * by, aw * by + ay * bw + az * bx - ax * bz,
            aw * bz + az * bw + ax * by - ay * bx, aw * bw - ax * bx - ay * by - az * bz};
}

Point Turned(const Quaternion& q, const Point& point) {
    const Quaternion back = {-q[0], -q[1], -q[2], q[3]};
    const Quaternion turned = Product(Product(q, {point[0], point[1], point[2], 0.0}), back);
    return {turned[0], turned[1], turned[2]};
}

TEST(PoseLanes, TurnLikePlainSinesAndCosines) {
    for (const auto& row : Kernels())
        for (const double range : {1e-5, 90.0, 720.0, 1e6}) {
            const AngleLanes angles = support::SomeAngles(45.0, range, 7);
            PoseLanes pose;
            ASSERT_TRUE(row.kernel->turn(angles, pose));
            for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
                const double degrees[3] = {angles.angle[0][lane], angles.angle[1][lane],
                                           angles.angle[2][lane]};
                Quaternion plain;
                math::TurnByAngles(degrees, plain.data());
                EXPECT_LT(Distance(RotationOf(pose, lane), plain), 1e-15)
                    << row.name << " " << range << " lane " << lane;
            }
        }
}

// The plain conversion itself, in the order x, y, z.
TEST(PoseLanes, TurnFirstAboutX) {
    constexpr double kHalf = 0.5 * 3.141592653589793 / 180.0;
    const double degrees[3] = {31.0, -72.0, 205.0};
    Quaternion all = {0, 0, 0, 1};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        Quaternion one = {0, 0, 0, std::cos(kHalf * degrees[axis])};
        one[axis] = std::sin(kHalf * degrees[axis]);
        all = Product(one, all);
    }
    Quaternion plain;
    math::TurnByAngles(degrees, plain.data());
    EXPECT_LT(Distance(plain, all), 1e-15);
}

TEST(PoseLanes, AreExactAtHalfTurns) {
    for (const auto& row : Kernels())
        for (const double turns : {0.0, 1.0, -1.0, 2.0, 5.0, -1000003.0}) {
            AngleLanes angles = {};
            std::fill_n(angles.angle[1], kPoseLanes, 180.0 * turns);
            PoseLanes pose;
            ASSERT_TRUE(row.kernel->turn(angles, pose));
            const bool isOdd = std::fmod(turns, 2.0) != 0.0;
            EXPECT_EQ(std::abs(pose.rotation[1][5]), isOdd ? 1.0 : 0.0) << row.name << turns;
            EXPECT_EQ(std::abs(pose.rotation[3][5]), isOdd ? 0.0 : 1.0) << row.name << turns;
            EXPECT_EQ(pose.rotation[0][5], 0.0) << row.name << turns;
            EXPECT_EQ(pose.rotation[2][5], 0.0) << row.name << turns;
        }
}

TEST(PoseLanes, TurnByLargeAnglesToo) {
    AngleLanes angles = support::SomeAngles(45.0, 90.0, 3);
    PoseLanes small;
    math::TurnByAngles(angles, small);
    angles.angle[0][9] = 360.0 * (1ULL << 40);
    PoseLanes pose;
    math::TurnByAngles(angles, pose);
    const double degrees[3] = {0.0, angles.angle[1][9], angles.angle[2][9]};
    Quaternion plain;
    math::TurnByAngles(degrees, plain.data());
    EXPECT_LT(Distance(RotationOf(pose, 9), plain), 1e-15);
    // The other lanes keep their bits.
    EXPECT_EQ(RotationOf(pose, 8), RotationOf(small, 8));
    EXPECT_EQ(RotationOf(pose, 10), RotationOf(small, 10));
}

TEST(PoseLanes, AttachLikePlainProducts) {
    const PoseLanes parent = SomePoses(1);
    const PoseLanes local = SomePoses(2);
    for (const auto& row : Kernels()) {
        PoseLanes global;
        row.kernel->attach(parent, local, global);
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
            const Quaternion turn = RotationOf(parent, lane);
            const Quaternion q = RotationOf(global, lane);
            EXPECT_LT(Distance(q, Product(turn, RotationOf(local, lane))), 1e-15) << row.name;
            EXPECT_NEAR(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3], 1.0, 1e-15);
            const Point offset = Turned(turn, PositionOf(local, lane));
            const Point origin = PositionOf(parent, lane);
            for (std::size_t axis = 0; axis < 3; ++axis)
                EXPECT_NEAR(global.position[axis][lane], origin[axis] + offset[axis], 2e-14)
                    << row.name;
        }
    }
}

// The quaternions come from random angles, of which many are multiples of 45 degrees, so that there
// is gimbal lock, too.
TEST(PoseLanes, HaveTheAnglesOfTheirRotations) {
    std::vector<const math::AngleKernel*> all = {&math::kAngleKernelPlain};
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (Kernels().size() > 1) all.push_back(&math::kAngleKernelAvx2);
#endif
    for (const math::AngleKernel* kernel : all)
        for (unsigned seed = 0; seed < 20; ++seed) {
            PoseLanes pose = SomePoses(seed);
            AngleLanes angles;
            kernel->angles(pose, angles);
            AngleLanes bvhAngles;
            double cosines[kPoseLanes];
            kernel->bvhAngles(pose, bvhAngles, cosines);
            for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
                const double degrees[3] = {angles.angle[0][lane], angles.angle[1][lane],
                                           angles.angle[2][lane]};
                Quaternion again;
                math::TurnByAngles(degrees, again.data());
                EXPECT_LT(Distance(again, RotationOf(pose, lane)), 1e-10) << seed << " " << lane;
                EXPECT_LE(std::abs(degrees[1]), 90.0);
                EXPECT_LE(std::abs(degrees[0]), 180.0);
                EXPECT_LE(std::abs(degrees[2]), 180.0);
                // y turns first, then x, then z.
                const double x[3] = {bvhAngles.angle[0][lane], 0.0, 0.0};
                const double y[3] = {0.0, bvhAngles.angle[1][lane], 0.0};
                const double z[3] = {0.0, 0.0, bvhAngles.angle[2][lane]};
                Quaternion parts[3];
                math::TurnByAngles(x, parts[0].data());
                math::TurnByAngles(y, parts[1].data());
                math::TurnByAngles(z, parts[2].data());
                again = Product(parts[2], Product(parts[0], parts[1]));
                EXPECT_LT(Distance(again, RotationOf(pose, lane)), 1e-10) << seed << " " << lane;
                EXPECT_NEAR(cosines[lane], std::cos(x[0] * 3.141592653589793 / 180.0), 1e-14);
            }
        }
}

TEST(PoseLanes, HaveNoAngleZAtGimbalLock) {
    AngleLanes angles = {};
    std::fill_n(angles.angle[0], kPoseLanes, 30.0);
    std::fill_n(angles.angle[1], kPoseLanes, -90.0);
    std::fill_n(angles.angle[2], kPoseLanes, 20.0);
    PoseLanes pose = {};
    math::TurnByAngles(angles, pose);
    math::AnglesOf(pose, angles);
    EXPECT_EQ(angles.angle[2][0], 0.0);
    EXPECT_NEAR(angles.angle[1][0], -90.0, 1e-6);
    EXPECT_NEAR(angles.angle[0][0], 50.0, 1e-12);
}

TEST(PoseLanes, CompareNeighbours) {
    const PoseLanes pose = SomePoses(4);
    for (const auto& row : Kernels()) {
        double cosines[kPoseLanes];
        row.kernel->compare(pose, cosines);
        EXPECT_EQ(cosines[0], 1.0);
        for (std::size_t lane = 1; lane < kPoseLanes; ++lane) {
            const Quaternion a = RotationOf(pose, lane - 1);
            const Quaternion b = RotationOf(pose, lane);
            EXPECT_NEAR(cosines[lane], a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3], 1e-15)
                << row.name;
        }
    }
}

TEST(PoseLanes, FindNumbersThatAreNotFinite) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    for (const auto& row : Kernels()) {
        PoseLanes pose = SomePoses(6);
        pose.position[1][3] = -1.7e308;
        EXPECT_TRUE(row.kernel->areFinite(pose)) << row.name;
        for (const double number : {kInfinity, -kInfinity, kNan})
            for (std::size_t lane : {std::size_t{0}, std::size_t{17}, kPoseLanes - 1}) {
                PoseLanes other = pose;
                other.position[lane % 3][lane] = number;
                EXPECT_FALSE(row.kernel->areFinite(other)) << row.name << lane;
                other = pose;
                other.rotation[lane % 4][lane] = number;
                EXPECT_FALSE(row.kernel->areFinite(other)) << row.name << lane;
            }
    }
}

}  // namespace pose_lanes_test
