#include "survey/bvh_rotations.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/support/math.h"

namespace {

using support::Matrix3;
using survey::BvhChannel;

// Rotation about one axis, for column vectors.
Matrix3 About(std::size_t axis, double degrees) {
    return support::ColumnRotation("xyz"[axis], support::Radians(degrees));
}

survey::BvhJoint Listing(const std::vector<std::size_t>& axes) {
    survey::BvhJoint joint;
    for (const std::size_t axis : axes)
        joint.channels[joint.channelCount++] = static_cast<BvhChannel>(3 + axis);
    return joint;
}

Matrix3 Product(const std::vector<std::size_t>& axes, const double (&row)[3]) {
    Matrix3 m = About(axes[0], row[0]);
    for (std::size_t i = 1; i < std::min<std::size_t>(axes.size(), 3); ++i)
        m = m * About(axes[i], row[i]);
    return m;
}

Matrix3 OfAngles(const double angles[3]) {
    return About(2, angles[2]) * About(1, angles[1]) * About(0, angles[0]);
}

const std::vector<std::vector<std::size_t>> kRising = {{0, 1, 2}, {0, 1}, {0, 2}, {1, 2}};

TEST(ReexpressedAngles, AreTheSameRotation) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> any(-400.0, 400.0);
    for (const auto& axes : kRising) {
        for (int i = 0; i < 20'000; ++i) {
            const double row[] = {any(random), any(random), any(random)};
            survey::ReexpressedAngles turned(Listing(axes));
            double angles[3] = {};
            turned.Next(row, angles);
            ASSERT_LE(Distance(Product(axes, row), OfAngles(angles)), 5e-14);
        }
    }
}

// The resulting angles are at or near gimbal lock, where the middle angle is 90 degrees.
TEST(ReexpressedAngles, AreTheSameRotationNearGimbalLock) {
    std::mt19937_64 random(4);
    std::uniform_real_distribution<double> any(-180.0, 180.0);
    const std::vector<std::size_t> axes = {0, 1, 2};
    for (int exponent = 0; exponent < 18; ++exponent) {
        for (int i = 0; i < 500; ++i) {
            // From the wanted angles, the listed angles of the same rotation are computed.
            const double near[] = {any(random), 90.0 - std::pow(10.0, -exponent), any(random)};
            const Matrix3 m = OfAngles(near);
            const double row[] = {
                std::atan2(-m[1][2], m[2][2]) * 180.0 / std::acos(-1.0),
                std::asin(std::clamp(m[0][2], -1.0, 1.0)) * 180.0 / std::acos(-1.0),
                std::atan2(-m[0][1], m[0][0]) * 180.0 / std::acos(-1.0)};
            survey::ReexpressedAngles turned(Listing(axes));
            double angles[3] = {};
            turned.Next(row, angles);
            ASSERT_LE(Distance(Product(axes, row), OfAngles(angles)), 5e-14) << exponent;
        }
    }
}

// A smooth take of many full turns gets angles without jumps if the middle angle stays away from 90
// degrees.
TEST(ReexpressedAngles, FollowTheFrameBefore) {
    survey::ReexpressedAngles turned(Listing({0, 1, 2}));
    double before[3] = {};
    for (int frame = 0; frame < 5000; ++frame) {
        const double t = 0.01 * frame;
        const double row[] = {40.0 * std::sin(t), 25.0 * std::sin(1.7 * t), 90.0 * t};
        double angles[3] = {};
        turned.Next(row, angles);
        for (std::size_t i = 0; frame > 0 && i < 3; ++i)
            ASSERT_LE(std::abs(angles[i] - before[i]), 5.0) << frame;
        std::copy(angles, angles + 3, before);
    }
    EXPECT_GT(before[2], 4000.0);  // more than eleven full turns
}

TEST(ReexpressedAngles, OfTheFirstFrameAreNearTheListedOnes) {
    survey::ReexpressedAngles turned(Listing({0, 1, 2}));
    const double row[] = {0.0, 0.0, 750.0};
    double angles[3] = {};
    turned.Next(row, angles);
    EXPECT_NEAR(angles[0], 0.0, 1e-9);
    EXPECT_NEAR(angles[1], 0.0, 1e-9);
    EXPECT_NEAR(angles[2], 750.0, 1e-9);
}

// The squared distance of the nearest angles of the same rotation to those of the frame before.
double SmallestDistance(const double angles[3], const double before[3]) {
    double smallest = std::numeric_limits<double>::infinity();
    for (const bool isFar : {false, true}) {
        const double same[] = {isFar ? angles[0] + 180.0 : angles[0],
                               isFar ? 180.0 - angles[1] : angles[1],
                               isFar ? angles[2] + 180.0 : angles[2]};
        double distance = 0.0;
        for (std::size_t i = 0; i < 3; ++i) {
            const double step = std::remainder(same[i] - before[i], 360.0);
            distance += step * step;
        }
        smallest = std::min(smallest, distance);
    }
    return smallest;
}

// Small and large steps, among them such of about 45 degrees.
TEST(ReexpressedAngles, AreTheNearestToTheFrameBefore) {
    std::mt19937_64 random(6);
    for (const double largest : {5.0, 40.0, 60.0, 120.0, 400.0}) {
        std::uniform_real_distribution<double> step(-largest, largest);
        survey::ReexpressedAngles turned(Listing({0, 1, 2}));
        double row[] = {0.0, 0.0, 0.0};
        double before[] = {0.0, 0.0, 0.0};
        for (int frame = 0; frame < 5000; ++frame) {
            double angles[3] = {};
            turned.Next(row, angles);
            double distance = 0.0;
            for (std::size_t i = 0; i < 3; ++i) {
                distance += (angles[i] - before[i]) * (angles[i] - before[i]);
                row[i] += step(random);
            }
            ASSERT_LE(distance, SmallestDistance(angles, before) + 1e-6) << largest << ' ' << frame;
            std::copy(angles, angles + 3, before);
        }
    }
}

// A middle angle that rises beyond 90 degrees must not fall again.
TEST(ReexpressedAngles, PassGimbalLock) {
    survey::ReexpressedAngles turned(Listing({0, 1}));
    double before = 0.0;
    for (int frame = 0; frame <= 360; ++frame) {
        const double row[] = {0.0, static_cast<double>(frame)};
        double angles[3] = {};
        turned.Next(row, angles);
        EXPECT_NEAR(angles[0], 0.0, 1e-9) << frame;
        EXPECT_NEAR(angles[1], frame, 1e-9) << frame;
        EXPECT_NEAR(angles[2], 0.0, 1e-9) << frame;
        before = angles[1];
    }
    EXPECT_NEAR(before, 360.0, 1e-9);
}

TEST(ReexpressedAngles, KeepZAtGimbalLock) {
    survey::ReexpressedAngles turned(Listing({0, 1, 2}));
    double angles[3] = {};
    const double first[] = {0.0, 60.0, 35.0};
    turned.Next(first, angles);
    const double z = angles[2];
    const double locked[] = {0.0, 90.0, 0.0};
    turned.Next(locked, angles);
    EXPECT_NEAR(angles[2], z, 1e-9);
    EXPECT_LE(Distance(Product({0, 1, 2}, locked), OfAngles(angles)), 5e-14);
}

// A block must have the angles of one frame after the other, also at gimbal lock, at angles of many
// turns, and with fewer than three rotations. Only rounding errors may differ. They grow near
// gimbal lock, so the other frames keep away from it.
TEST(ReexpressedAngles, AreTheSameInBlocks) {
    const std::vector<std::vector<std::size_t>> orders = {{0, 1, 2}, {2, 1, 0}, {1, 2}, {0, 2}};
    std::mt19937 random(9);
    std::uniform_real_distribution<double> angle(-70.0, 70.0);
    for (const std::vector<std::size_t>& order : orders) {
        for (const std::size_t frames : {1, 7, 64}) {
            constexpr std::size_t kStride = 5;
            std::vector<double> values(3 * frames * kStride);
            for (double& value : values)
                value = 360.0 * (double(random() % 5) - 2.0) + angle(random);
            for (std::size_t locked = 1; locked < values.size(); locked += 4 * kStride)
                values[locked] = 90.0;
            const survey::BvhJoint joint = Listing(order);
            survey::ReexpressedAngles alone(joint);
            survey::ReexpressedAngles together(joint);
            for (std::size_t first = 0; first < 3 * frames; first += frames) {
                const survey::FrameRows rows = {values.data() + first * kStride, kStride, frames};
                std::vector<double> angles(4 * frames);
                survey::ListedBlock block;
                together.Compute(rows, block);
                together.Follow(rows, block, angles.data(), 4);
                for (std::size_t frame = 0; frame < frames; ++frame) {
                    double expected[3];
                    alone.Next(rows.first + frame * kStride, expected);
                    const double* const turned = &angles[4 * frame];
                    for (std::size_t axis = 0; axis < 3; ++axis)
                        ASSERT_NEAR(turned[axis], expected[axis], 1e-11) << frame;
                    ASSERT_LE(Distance(OfAngles(turned), OfAngles(expected)), 5e-14) << frame;
                }
            }
        }
    }
}

}  // namespace
