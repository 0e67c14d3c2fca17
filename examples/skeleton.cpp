#include "examples/skeleton.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace examples {
namespace {

// Lengths are in cm. Heights are measured from the floor. The fractions of the stature are from
// Drillis and Contini (1966), as quoted by Winter.
constexpr double kStature = 175.0;
constexpr double kHipHeight = 0.530 * kStature;
constexpr double kKneeHeight = 0.285 * kStature;
constexpr double kAnkleHeight = 0.039 * kStature;
constexpr double kFootLength = 0.152 * kStature;
constexpr double kShoulderHeight = 0.818 * kStature;
constexpr double kUpperArm = 0.186 * kStature;
constexpr double kForeArm = 0.146 * kStature;
constexpr double kHand = 0.108 * kStature;

// Half the distance between the hip joints. The left and right front corners of the pelvis (the
// anterior superior iliac spines) are about 24 cm apart. Each hip joint is 14 % of these 24 cm
// nearer to the middle than the corner on its side (Bell, Brand and Pedersen 1989).
constexpr double kHipHalfWidth = 8.64;
// The angle between leg and vertical in the T-pose, in degrees. The legs lean inwards, so that the
// feet are closer together than the hips.
constexpr double kLegLean = 2.0;
// The distance of the shoulder joint from the middle of the body. The outline of the shoulder is
// 0.129 of the stature from the middle. The joint is about 4 cm nearer to the middle.
constexpr double kShoulderHalfWidth = 0.129 * kStature - 4.0;

// Points of the trunk in the T-pose. The published proportions do not include them. The heights are
// measured from the floor. Z is relative to the hips and follows the curve of the spine.
constexpr double kHipsHeight = 0.560 * kStature;
constexpr Vec3 kTrunk[] = {{0, 0.585 * kStature, -1.8},  // lumbosacral joint
                           {0, 0.650 * kStature, -0.9},  // middle of the lumbar spine
                           {0, 0.725 * kStature, -2.0},  // lower end of the ribs
                           {0, 0.838 * kStature, -3.5},  // lower end of the neck
                           {0, 0.915 * kStature, -1.2},  // upper end of the neck
                           {0, 1.000 * kStature, 0.0}};  // top of the head

constexpr std::array<Limit, 3> kNoLimits{};

Vec3 MirroredVector(const Vec3& v) {
    return {-v.x, v.y, v.z};
}
// The mirror plane is x = 0. An angle about X keeps its sign. Angles about Y and Z change their
// sign.
Vec3 MirroredAngles(const Vec3& v) {
    return {v.x, -v.y, -v.z};
}

Joint Mirrored(const Joint& left, JointId parent) {
    Joint right = left;
    right.name = "Right" + left.name.substr(std::string_view("Left").size());
    right.parent = parent;
    right.offset = MirroredVector(left.offset);
    right.end = MirroredVector(left.end);
    right.axis = MirroredAngles(left.axis);
    for (std::size_t axis = 1; axis < 3; ++axis)
        right.limits[axis] = {-left.limits[axis].max, -left.limits[axis].min};
    return right;
}

// Appends the joints of a left limb, then the joints of the right limb, which is its mirror image.
// In `left`, each joint comes directly after its parent.
void AddLimbs(Skeleton& skeleton, const std::vector<Joint>& left) {
    skeleton.insert(skeleton.end(), left.begin(), left.end());
    JointId parent = left.front().parent;
    for (const Joint& joint : left) {
        skeleton.push_back(Mirrored(joint, parent));
        parent = static_cast<JointId>(skeleton.size() - 1);
    }
}

std::vector<Joint> LeftLeg() {
    const Vec3 down = TurnZ(-kLegLean) * Vec3{0, -1, 0};
    const FootContacts foot = MakeFootContacts();
    return {
        {"LeftUpLeg",
         kHips,
         {kHipHalfWidth, kHipHeight - kHipsHeight, 0},
         {},
         {0, 0, -kLegLean},
         "xyz",
         {{{-120, 30}, {-45, 45}, {-30, 50}}}},
        {"LeftLeg",
         kLeftUpLeg,
         (kHipHeight - kKneeHeight) * down,
         {},
         {0, 0, -kLegLean},
         "x",
         {{{-5, 150}}}},
        {"LeftFoot",
         kLeftLeg,
         (kKneeHeight - kAnkleHeight) * down,
         {},
         {-70, 0, -kLegLean},
         "xyz",
         {{{-35, 55}, {-35, 35}, {-35, 35}}}},
        {"LeftToe", kLeftFoot, foot.ball, foot.tip - foot.ball, {-80, 0, 0}, "x", {{{-70, 40}}}}};
}

std::vector<Joint> LeftArm() {
    const Vec3 collar = Vec3{kShoulderHalfWidth, kShoulderHeight, -3.0} - kTrunk[3];
    return {
        {"LeftShoulder",
         kSpine2,
         kTrunk[3] - kTrunk[2],
         {},
         {0, -1.5, -9},
         "yz",
         {{kNoLimits[0], {-20, 20}, {-15, 40}}}},
        {"LeftArm",
         kLeftShoulder,
         collar,
         {},
         {15, 0, -90},
         "xyz",
         {{{-90, 90}, {-85, 85}, {-120, 90}}}},
        // In the T-pose, the forearm bends about its own X axis, which {0, 0, -90} turns downwards.
        {"LeftForeArm", kLeftArm, {kUpperArm, 0, 0}, {}, {0, 0, -90}, "x", {{{-5, 150}}}},
        {"LeftHand",
         kLeftForeArm,
         {kForeArm, 0, 0},
         {kHand, 0, 0},
         {0, 0, -90},
         "xz",
         {{{-30, 40}, kNoLimits[1], {-80, 70}}}}};
}

Joint TrunkJoint(std::string name, JointId parent, std::size_t index, const Vec3& axis,
                 double limit) {
    const Vec3 from = index == 0 ? Vec3{0, kHipsHeight, 0} : kTrunk[index - 1];
    const Limit both{-limit, limit};
    return {std::move(name), parent, kTrunk[index] - from, {}, axis, "xyz", {both, both, both}};
}

}  // namespace

FootContacts MakeFootContacts() {
    constexpr double kHeelBehind = 5.0;           // cm from the heel forward to the ankle
    constexpr double kBall = 0.70 * kFootLength;  // cm from the heel forward to the ball
    return {{0, -kAnkleHeight, -kHeelBehind},
            {0, 2.2 - kAnkleHeight, kBall - kHeelBehind},
            {0, 1.0 - kAnkleHeight, kFootLength - kHeelBehind}};
}

Skeleton MakeSkeleton() {
    Skeleton skeleton;
    skeleton.reserve(kJointCount);
    skeleton.push_back({"Hips", kHips, {0, kHipsHeight, 0}, {}, {}, "xyz", kNoLimits});
    AddLimbs(skeleton, LeftLeg());
    skeleton.push_back(TrunkJoint("Spine", kHips, 0, {18, 0, 0}, 40));
    skeleton.push_back(TrunkJoint("Spine1", kSpine, 1, {-7, 0, 0}, 40));
    skeleton.push_back(TrunkJoint("Spine2", kSpine1, 2, {-5, 0, 0}, 40));
    skeleton.push_back(TrunkJoint("Neck", kSpine2, 3, {13, 0, 0}, 60));
    skeleton.push_back(TrunkJoint("Head", kNeck, 4, {6, 0, 0}, 60));
    skeleton.back().end = kTrunk[5] - kTrunk[4];
    AddLimbs(skeleton, LeftArm());
    return skeleton;
}

}  // namespace examples
