// Compares the conversion of many rotations at a time with that of one.
#include "math/rotation_batch.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

#include "math/angles.h"
#include "math/rotation_kernel.h"
#include "math/rotation_math.h"
#include "tests/support/math.h"

namespace {

using support::Matrix4;
using support::RowRotationOfDegrees;

constexpr int kOrders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};

// Products in all orders of the axes, with and without a matrix before and after them.
struct Surroundings {
    Matrix4 before = RowRotationOfDegrees(17, -33, 71);
    Matrix4 after = RowRotationOfDegrees(-140, 25, 9);

    template <class Use>
    void ForEach(Use use) const {
        for (const auto& order : kOrders)
            for (int which = 0; which < 4; ++which) {
                RotationProduct product;
                std::copy_n(order, 3, product.axis);
                if (which & 1) product.before = before.m;
                if (which & 2) product.after = after.m;
                use(product);
            }
    }
};

RotationBlock RandomBlock(std::uint64_t seed, double range) {
    std::mt19937_64 random(seed);
    RotationBlock block;
    for (auto& angles : block.angle)
        for (double& angle : angles)
            angle = (static_cast<double>(random() % 2'000'001) / 1e6 - 1.0) * range;
    return block;
}

// The distance between the rotations rather than between the angles, because near half a turn
// angles of different signs are the same rotation.
double DistanceOfTurns(const RotationBlock& block, std::size_t lane, const double angles[3]) {
    return Distance(
        RowRotationOfDegrees(block.angle[0][lane], block.angle[1][lane], block.angle[2][lane]),
        RowRotationOfDegrees(angles[0], angles[1], angles[2]));
}

void ExpectAlike(const RotationBlock& given, const RotationProduct& product) {
    RotationBlock block = given;
    ConvertRotations(block, product);
    for (std::size_t lane = 0; lane < kRotationBlock; ++lane) {
        double angles[3] = {given.angle[0][lane], given.angle[1][lane], given.angle[2][lane]};
        ConvertRotation(angles, product);
        ASSERT_LE(DistanceOfTurns(block, lane, angles), 2e-11) << lane;
        for (int i = 0; i < 3; ++i)
            ASSERT_NEAR(block.angle[i][lane], angles[i], 1e-9) << lane << " angle " << i;
    }
}

TEST(RotationBatch, GivesTheAnglesOfConvertRotation) {
    for (const double range : {180.0, 10.0, 1e-3, 1e5})
        Surroundings().ForEach([range](const RotationProduct& product) {
            ExpectAlike(RandomBlock(static_cast<std::uint64_t>(range), range), product);
        });
}

// At round angles sines and cosines are zero, there is gimbal lock, and rounding decides between
// 180 and -180 degrees.
TEST(RotationBatch, GivesTheAnglesOfConvertRotationOnAGrid) {
    for (const double step : {45.0, 10.0}) {
        const int count = static_cast<int>(360.0 / step);
        const int lanes = static_cast<int>(kRotationBlock);
        Surroundings().ForEach([&](const RotationProduct& product) {
            for (int first = 0; first < count * count * count; first += lanes) {
                RotationBlock block;
                for (int lane = 0; lane < lanes; ++lane) {
                    const int row = first + lane;
                    const int digits[] = {row % count, row / count % count,
                                          row / count / count % count};
                    for (int i = 0; i < 3; ++i)
                        block.angle[i][lane] = step * (digits[i] + 1) - 180.0;
                }
                ExpectAlike(block, product);
                if (testing::Test::HasFatalFailure()) return;
            }
        });
    }
}

// The identity gives exactly the same angles on both paths.
TEST(RotationBatch, GivesHalfTurnsTheirSign) {
    for (const auto& order : kOrders) {
        RotationProduct product;
        std::copy_n(order, 3, product.axis);
        RotationBlock block = {};
        ConvertRotations(block, product);
        double angles[3] = {};
        ConvertRotation(angles, product);
        for (int i = 0; i < 3; ++i) {
            EXPECT_EQ(angles[i], -180.0);
            EXPECT_EQ(block.angle[i][0], -180.0);
            EXPECT_EQ(block.angle[i][kRotationBlock - 1], -180.0);
        }
    }
}

TEST(RotationBatch, LeavesLanesThatAreNotUsed) {
    const RotationBlock given = RandomBlock(11, 180.0);
    RotationBlock all = given;
    RotationBlock some = given;
    constexpr std::size_t kUsed = 5;
    ConvertRotations(all, RotationProduct());
    ConvertRotations(some, RotationProduct(), kUsed);
    for (int i = 0; i < 3; ++i)
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane)
            ASSERT_EQ(some.angle[i][lane], (lane < kUsed ? all : given).angle[i][lane]) << lane;
}

TEST(RotationBatch, UsesConvertRotationAtGimbalLock) {
    for (const double pitch : {90.0, -90.0, 89.9999, 90.5, -89.5, 270.0}) {
        RotationBlock block = RandomBlock(7, 180.0);
        std::fill_n(block.angle[1], kRotationBlock, pitch);
        const RotationBlock given = block;
        ConvertRotations(block, RotationProduct());
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane) {
            double angles[3] = {given.angle[0][lane], given.angle[1][lane], given.angle[2][lane]};
            ConvertRotation(angles, RotationProduct());
            for (int i = 0; i < 3; ++i)
                ASSERT_EQ(block.angle[i][lane], angles[i]) << pitch;
        }
    }
}

TEST(RotationBatch, UsesConvertRotationForNaN) {
    const double strange[] = {std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL};
    Surroundings().ForEach([&](const RotationProduct& product) {
        RotationBlock block = RandomBlock(8, 180.0);
        for (std::size_t lane = 0; lane < kRotationBlock; lane += 2)
            block.angle[lane / 2 % 3][lane] = strange[lane / 6 % 3];
        const RotationBlock given = block;
        ConvertRotations(block, product);
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane) {
            double angles[3] = {given.angle[0][lane], given.angle[1][lane], given.angle[2][lane]};
            ConvertRotation(angles, product);
            for (int i = 0; i < 3; ++i)
                ASSERT_EQ(std::isnan(block.angle[i][lane]), std::isnan(angles[i]))
                    << lane << " angle " << i;
        }
    });
}

// The loops for both instruction sets agree, whichever of them this machine would use.
TEST(RotationBatch, HasTheSameLoopsForEveryProcessor) {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (!__builtin_cpu_supports("avx2") || !__builtin_cpu_supports("fma"))
        GTEST_SKIP() << "this processor can run only the plain loops";
    Surroundings().ForEach([](const RotationProduct& product) {
        const RotationBlock block = RandomBlock(9, 180.0);
        RotationKernelResult plain, vector;
        RotationKernelPlain(block, product, plain);
        RotationKernelAvx2(block, product, vector);
        for (std::size_t lane = 0; lane < kRotationBlock; ++lane) {
            ASSERT_NEAR(plain.cosine[lane], vector.cosine[lane], 1e-14);
            if (plain.cosine[lane] < 1e-2) continue;
            for (int i = 0; i < 3; ++i)
                ASSERT_LE(
                    std::fabs(std::remainder(plain.angle[i][lane] - vector.angle[i][lane], 360.0)),
                    1e-9);
        }
    });
#else
    GTEST_SKIP() << "this build has only the plain loops";
#endif
}

}  // namespace
