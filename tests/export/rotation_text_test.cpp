// Tests the conversion of rotations to the angles of BVH files and to quaternions.
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "export/bvh_angles.h"
#include "export/quaternion.h"
#include "headless/transform.h"
#include "tests/support/math.h"

namespace {

using exporters::BvhAngles;
using headless::FromLocal;
using headless::Transform;

// y turns first, then x, then z.
Transform FromAngles(const BvhAngles& angles) {
    return FromLocal({0, 0, 0, 0, angles.y, 0}) * FromLocal({0, 0, 0, angles.x, 0, 0}) *
           FromLocal({0, 0, 0, 0, 0, angles.z});
}

std::array<double, 6> RandomLocal(std::mt19937_64& random) {
    // About two of three angles are a multiple of a right angle or differ from one by at most a
    // degree.
    std::array<double, 6> local{};
    for (std::size_t channel = 3; channel < 6; ++channel) {
        const double any = std::uniform_real_distribution<double>(-400.0, 400.0)(random);
        const double right = 90.0 * std::round(any / 90.0);
        const double deviation = std::pow(10.0, -static_cast<double>(random() % 16));
        local[channel] = random() % 3 == 0 ? any : random() % 2 == 0 ? right : right + deviation;
    }
    return local;
}

TEST(BvhAngles, GiveTheSameAxesAgain) {
    std::mt19937_64 random(7);
    for (int count = 0; count < 100'000; ++count) {
        const Transform turned = FromLocal(RandomLocal(random));
        const BvhAngles before{std::uniform_real_distribution<double>(-700.0, 700.0)(random), 0, 0};
        // The bound allows for angles of several turns, which lose some digits in degrees.
        ASSERT_LE(support::Distance(FromAngles(exporters::AnglesNear(turned.axes, before)).axes,
                                    turned.axes),
                  1e-14);
    }
}

TEST(BvhAngles, AreTheSameForManyAtATime) {
    std::mt19937_64 random(9);
    for (const std::size_t count : {0U, 1U, 31U, 32U, 33U, 1000U}) {
        std::vector<Transform> turned;
        for (std::size_t i = 0; i < count; ++i)
            turned.push_back(FromLocal(RandomLocal(random)));
        std::vector<exporters::PrincipalAngles> many(count);
        exporters::AnglesOf(turned, many);
        for (std::size_t i = 0; i < count; ++i) {
            const exporters::PrincipalAngles one = exporters::AnglesOf(turned[i].axes);
            ASSERT_EQ(many[i].isGimbalLocked, one.isGimbalLocked) << i;
            ASSERT_NEAR(many[i].angles.z, one.angles.z, 1e-12) << i;
            ASSERT_NEAR(many[i].angles.x, one.angles.x, 1e-12) << i;
            ASSERT_NEAR(many[i].angles.y, one.angles.y, 1e-12) << i;
        }
    }
}

TEST(BvhAngles, ContinueWithoutAJump) {
    BvhAngles angles;
    for (int frame = 0; frame <= 1000; ++frame) {
        const double turn = 1.25 * frame;
        const BvhAngles next = exporters::AnglesNear(FromAngles({turn, 20.0, -turn}).axes, angles);
        EXPECT_NEAR(next.z, turn, 1e-9);
        EXPECT_NEAR(next.x, 20.0, 1e-9);
        EXPECT_NEAR(next.y, -turn, 1e-9);
        angles = next;
    }
}

TEST(BvhAngles, ContinueThroughGimbalLock) {
    BvhAngles angles;
    for (int frame = 0; frame <= 360; ++frame) {
        angles = exporters::AnglesNear(FromAngles({10.0, 1.0 * frame, 30.0}).axes,
                                       frame == 0 ? BvhAngles{10.0, 0.0, 30.0} : angles);
        EXPECT_NEAR(angles.x, 1.0 * frame, 1e-6);
    }
}

TEST(Quaternion, TurnsTheAxesIntoTheRows) {
    std::mt19937_64 random(8);
    for (int count = 0; count < 100'000; ++count) {
        const Transform turned = FromLocal(RandomLocal(random));
        const exporters::Quaternion q = exporters::QuaternionOf(turned.axes);
        ASSERT_GE(q.w, 0.0);
        const Transform back{{{1 - 2 * (q.y * q.y + q.z * q.z), 2 * (q.x * q.y + q.z * q.w),
                               2 * (q.x * q.z - q.y * q.w)},
                              {2 * (q.x * q.y - q.z * q.w), 1 - 2 * (q.x * q.x + q.z * q.z),
                               2 * (q.y * q.z + q.x * q.w)},
                              {2 * (q.x * q.z + q.y * q.w), 2 * (q.y * q.z - q.x * q.w),
                               1 - 2 * (q.x * q.x + q.y * q.y)}},
                             {0, 0, 0}};
        ASSERT_LE(support::Distance(back.axes, turned.axes), 2e-15);
    }
}

TEST(Quaternion, IsTheOneNearerToTheFrameBefore) {
    // The quaternion of a turn of `degrees` about z. Another whole turn gives the other quaternion
    // of the same rotation.
    const auto turned = [](double degrees) {
        const double half = degrees * std::acos(-1.0) / 360.0;
        return exporters::Quaternion{0.0, 0.0, std::sin(half), std::cos(half)};
    };
    const struct {
        double degrees;
        exporters::Quaternion before;
        double expected;  // degrees
    } kRows[] = {{10.0, turned(0.0), 10.0},      {190.0, turned(170.0), 190.0},
                 {-170.0, turned(170.0), 190.0}, {10.0, turned(350.0), 370.0},
                 {10.0, turned(-10.0), 10.0},    {10.0, {0, 0, 0, 0}, 10.0},
                 {200.0, {0, 0, 0, 0}, -160.0}};
    for (const auto& row : kRows) {
        const Transform transform = FromLocal({0, 0, 0, 0, 0, row.degrees});
        const exporters::Quaternion q = exporters::QuaternionNear(transform.axes, row.before);
        const exporters::Quaternion expected = turned(row.expected);
        EXPECT_NEAR(q.z, expected.z, 1e-15) << row.degrees << " to " << row.expected;
        EXPECT_NEAR(q.w, expected.w, 1e-15) << row.degrees << " to " << row.expected;
    }
}

}  // namespace
