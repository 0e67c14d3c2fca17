// Whether the sample walk looks like walking, measured on the joints of walk.bvh.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <gtest/gtest.h>
#include <numbers>
#include <ostream>
#include <string>
#include <vector>

#include "tests/examples/forward_kinematics.h"

namespace examples_test {
namespace {

constexpr std::size_t kCycle = 64;  // frames
constexpr double kRounding = 1e-4;  // cm, for angles that are written with six digits

class WalkMotion : public testing::Test {
  protected:
    const std::vector<Joint>& Of(const std::string& name) const { return file_.walk.at(name); }
    std::size_t Frames() const { return file_.rows.size(); }

    // For each frame, how far ahead of the hips a joint is, in cm.
    std::vector<double> Ahead(const std::string& name) const {
        std::vector<double> ahead;
        for (std::size_t frame = 0; frame < Frames(); ++frame)
            ahead.push_back(Of(name)[frame].position[2] - Of("Hips")[frame].position[2]);
        return ahead;
    }

    // The bend between the segments a-b and b-c, in degrees.
    double Bend(const std::string& a, const std::string& b, const std::string& c,
                std::size_t frame) const {
        const Vec3& middle = Of(b)[frame].position;
        const double before = Distance(Of(a)[frame].position, middle);
        const double after = Distance(Of(c)[frame].position, middle);
        const double across = Distance(Of(a)[frame].position, Of(c)[frame].position);
        const double cosine =
            (before * before + after * after - across * across) / (2 * before * after);
        return 180 - std::acos(std::clamp(cosine, -1.0, 1.0)) * 180 / std::numbers::pi;
    }

    const BvhWalk file_ = ReadBvh(ZK_SAMPLES_DIR "/walk.bvh");
};

double Correlation(const std::vector<double>& a, const std::vector<double>& b) {
    const auto mean = [](const std::vector<double>& v) {
        double sum = 0;
        for (const double value : v)
            sum += value;
        return sum / static_cast<double>(v.size());
    };
    const double meanA = mean(a);
    const double meanB = mean(b);
    double both = 0;
    double squareA = 0;
    double squareB = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        both += (a[i] - meanA) * (b[i] - meanB);
        squareA += (a[i] - meanA) * (a[i] - meanA);
        squareB += (b[i] - meanB) * (b[i] - meanB);
    }
    return both / std::sqrt(squareA * squareB);
}

// A point of the foot that is on the floor for a part of the cycle, relative to a joint of the
// file.
struct Contact {
    const char* name;
    const char* joint;
    Vec3 fromJoint;    // cm, in the joint's axes
    double leastDown;  // parts of a cycle
    double mostDown;
};

std::ostream& operator<<(std::ostream& out, const Contact& row) {
    return out << row.name;
}
class WalkContact : public WalkMotion, public testing::WithParamInterface<Contact> {
  protected:
    std::vector<Vec3> Path() const {
        std::vector<Vec3> path;
        for (const Joint& joint : Of(GetParam().joint))
            path.push_back(Add(joint.position, joint.axes * GetParam().fromJoint));
        return path;
    }
};

TEST_P(WalkContact, DoesNotMoveWhileItIsDown) {
    const std::vector<Vec3> path = Path();
    const auto lower = [](const Vec3& a, const Vec3& b) { return a[1] < b[1]; };
    const double floor = (*std::min_element(path.begin(), path.end(), lower))[1];
    EXPECT_GT(floor, -kRounding) << "below the floor";
    std::size_t down = 0;
    for (std::size_t frame = 1; frame < path.size(); ++frame) {
        if (path[frame][1] > floor + 0.005 || path[frame - 1][1] > floor + 0.005) continue;
        ++down;
        EXPECT_LT(Distance(path[frame], path[frame - 1]), 0.01) << "frame " << frame;
    }
    const double part = static_cast<double>(down) / static_cast<double>(path.size() - 1);
    EXPECT_GT(part, GetParam().leastDown);
    EXPECT_LT(part, GetParam().mostDown);
}

// The heel is 5 cm further back than the ankle, and lower by 0.039 of the stature of 175 cm.
constexpr Vec3 kHeel{0, -6.825, -5};
INSTANTIATE_TEST_SUITE_P(, WalkContact,
                         testing::Values(Contact{"LeftHeel", "LeftFoot", kHeel, 0.22, 0.35},
                                         Contact{"RightHeel", "RightFoot", kHeel, 0.22, 0.35},
                                         Contact{"LeftBall", "LeftToe", {}, 0.35, 0.5},
                                         Contact{"RightBall", "RightToe", {}, 0.35, 0.5},
                                         Contact{"LeftTip", "LeftToe_End", {}, 0.45, 0.58},
                                         Contact{"RightTip", "RightToe_End", {}, 0.45, 0.58}),
                         [](const auto& row) { return row.param.name; });

TEST_F(WalkMotion, SwingsEachArmAgainstTheLegOfItsSide) {
    for (const std::string side : {"Left", "Right"}) {
        const std::string other = side == "Left" ? "Right" : "Left";
        EXPECT_LT(Correlation(Ahead(side + "Hand"), Ahead(side + "Foot")), -0.9) << side;
        EXPECT_GT(Correlation(Ahead(side + "Hand"), Ahead(other + "Foot")), 0.9) << side;
    }
}

// Landmarks of the knee's bend that textbooks show for normal walking.
struct Landmark {
    const char* name;
    std::size_t from;  // percent of the cycle
    std::size_t to;
    double least;  // degrees, of the largest bend in that part
    double most;
};
std::ostream& operator<<(std::ostream& out, const Landmark& row) {
    return out << row.name;
}
class WalkKnee : public WalkMotion, public testing::WithParamInterface<Landmark> {};

TEST_P(WalkKnee, BendsAsKneesDo) {
    // The cycles of the left foot begin with those of the file, the right foot's half a cycle
    // later.
    for (const std::string side : {"Left", "Right"}) {
        const std::size_t start = kCycle + (side == "Left" ? 0 : kCycle / 2);
        double largest = 0;
        for (std::size_t frame = GetParam().from * kCycle / 100;
             frame <= GetParam().to * kCycle / 100; ++frame)
            largest =
                std::max(largest, Bend(side + "UpLeg", side + "Leg", side + "Foot", start + frame));
        EXPECT_GT(largest, GetParam().least) << side;
        EXPECT_LT(largest, GetParam().most) << side;
    }
}

INSTANTIATE_TEST_SUITE_P(, WalkKnee,
                         testing::Values(Landmark{"AtContact", 0, 0, 0, 15},
                                         Landmark{"TakingTheLoad", 8, 22, 15, 28},
                                         Landmark{"OverTheFoot", 28, 34, 2, 12},
                                         Landmark{"InTheAir", 66, 80, 55, 70}),
                         [](const auto& row) { return row.param.name; });

TEST_F(WalkMotion, MirrorsTheLeftHalfACycleLater) {
    const double halfStride = (Of("Hips")[kCycle].position[2] - Of("Hips")[0].position[2]) / 2;
    for (const auto& [name, joints] : file_.walk) {
        std::string mirror = name;
        if (name.starts_with("Left")) mirror = "Right" + name.substr(4);
        if (name.starts_with("Right")) mirror = "Left" + name.substr(5);
        for (std::size_t frame = 0; frame + kCycle / 2 < Frames(); ++frame) {
            const Vec3& a = joints[frame].position;
            const Vec3& b = Of(mirror)[frame + kCycle / 2].position;
            ASSERT_LT(Distance({-a[0], a[1], a[2] + halfStride}, b), kRounding)
                << name << ", frame " << frame;
        }
    }
}

TEST_F(WalkMotion, EndsInThePoseItBeganWith) {
    const Vec3& first = Of("Hips").front().position;
    const Vec3& last = Of("Hips").back().position;
    EXPECT_EQ((Frames() - 1) % kCycle, 0U);
    EXPECT_NEAR(last[0], first[0], kRounding);
    EXPECT_NEAR(last[1], first[1], kRounding);
    EXPECT_GT(last[2] - first[2], 500) << "cm ahead, in four strides";
    for (std::size_t i = 3; i < file_.rows.front().size(); ++i)
        EXPECT_NEAR(file_.rows.front()[i], file_.rows.back()[i], 2e-6) << "value " << i;
}

// The range of a joint's position in a walk, in cm.
struct Excursion {
    const char* name;
    const char* joint;
    std::size_t axis;
    double least;
    double most;
};
std::ostream& operator<<(std::ostream& out, const Excursion& row) {
    return out << row.name;
}
class WalkExcursion : public WalkMotion, public testing::WithParamInterface<Excursion> {};

TEST_P(WalkExcursion, IsAsLargeAsInAWalk) {
    std::vector<double> values;
    for (const Joint& joint : Of(GetParam().joint))
        values.push_back(joint.position[GetParam().axis]);
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    EXPECT_GT(*high - *low, GetParam().least);
    EXPECT_LT(*high - *low, GetParam().most);
}

INSTANTIATE_TEST_SUITE_P(, WalkExcursion,
                         testing::Values(Excursion{"HipsSway", "Hips", 0, 3, 5},
                                         Excursion{"HipsRiseAndFall", "Hips", 1, 2.5, 5},
                                         Excursion{"HeadSways", "Head", 0, 1, 5},
                                         Excursion{"HeadRisesAndFalls", "Head", 1, 2, 5}),
                         [](const auto& row) { return row.param.name; });

TEST_F(WalkMotion, KeepsTheHeadLevelAndAhead) {
    for (const Joint& head : Of("Head")) {
        EXPECT_GT(head.axes[1][1], std::cos(support::Radians(4)));  // its Y axis is up
        EXPECT_GT(head.axes[2][2], std::cos(support::Radians(4)));  // its Z axis is ahead
    }
}

}  // namespace
}  // namespace examples_test
