#include "examples/gait_model.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "examples/trunk.h"

namespace examples {
namespace {

constexpr double kDegrees = 180 / std::numbers::pi;

// `cycles` is the time in cycles since the left foot landed. Returns the time in cycles since the
// foot of `side` landed.
double OwnCycles(Side side, double cycles) {
    return side == Side::kLeft ? cycles : cycles + 0.5;
}

JointId OfSide(Side side, JointId left, JointId right) {
    return side == Side::kLeft ? left : right;
}

// `turn` is a rotation about the joint's own axes. Returns the same rotation about the world's axes
// in the T-pose.
Rotation FromAxisFrame(const Joint& joint, const Rotation& turn) {
    const Rotation frame = TurnXyz(joint.axis);
    return frame * turn * Inverse(frame);
}

struct LegBend {
    Rotation thigh;  // turns the thigh from its T-pose to its orientation in the world
    double knee;     // degrees; 0 if the leg is straight
};

// Computes how thigh and knee turn so that the leg reaches from the hip to the ankle. The knee
// points towards `ahead`. `down` is the direction of the leg in the T-pose. `hinge` is the axis of
// the knee in the T-pose. `down` and `hinge` have the length 1 and are at a right angle to each
// other.
LegBend Reach(const Vec3& hipToAnkle, const Vec3& ahead, const Vec3& down, const Vec3& hinge,
              double thigh, double shank) {
    const double reach = Length(hipToAnkle);
    const double cosine = (reach * reach - thigh * thigh - shank * shank) / (2 * thigh * shank);
    if (cosine > 1)
        throw std::logic_error("the planned position of a foot is out of the leg's reach");
    const double knee = std::acos(cosine) * kDegrees;

    const Vec3 rest = Normalized(thigh * down + shank * (TurnAbout(hinge, knee) * down));
    const Rotation restFrame{hinge, rest, Cross(hinge, rest)};
    const Vec3 along = Normalized(hipToAnkle);
    const Vec3 side = Normalized(Cross(ahead, along));
    const Rotation frame{side, along, Cross(side, along)};
    return {frame * Inverse(restFrame), knee};
}

}  // namespace

GaitModel::GaitModel(const Skeleton& skeleton) : skeleton_(skeleton), feet_(skeleton) {}

Pose GaitModel::At(double cycles) const {
    Pose pose;
    PoseTrunk(cycles, pose);
    for (const Side side : {Side::kLeft, Side::kRight}) {
        PoseLeg(side, cycles, pose);
        PoseArm(side, cycles, pose);
    }
    return pose;
}

void GaitModel::PoseTrunk(double cycles, Pose& pose) const {
    const Placement pelvis = PelvisAt(cycles);
    pose.hips = pelvis.origin;
    pose.local[kHips] = pelvis.rotation;
    // Divides the rotation between `from` and `to` into `count` equal parts. Each of the `count`
    // joints, beginning with `first`, gets one part.
    const auto share = [&pose](const Rotation& from, const Rotation& to, JointId first, int count) {
        Rotation below = from;
        for (int i = 1; i <= count; ++i) {
            const Rotation above = Between(from, to, static_cast<double>(i) / count);
            pose.local[first + static_cast<std::size_t>(i) - 1] = Inverse(below) * above;
            below = above;
        }
    };
    const Rotation thorax = ThoraxAt(cycles);
    share(pelvis.rotation, thorax, kSpine, 3);
    share(thorax, HeadAt(cycles), kNeck, 2);
}

void GaitModel::PoseLeg(Side side, double cycles, Pose& pose) const {
    // The angle by which the knee points outwards, in degrees. The foot points outwards more.
    constexpr double kKneeOut = 3.0;
    const JointId upLeg = OfSide(side, kLeftUpLeg, kRightUpLeg);
    const JointId leg = OfSide(side, kLeftLeg, kRightLeg);
    const JointId foot = OfSide(side, kLeftFoot, kRightFoot);
    const JointId toe = OfSide(side, kLeftToe, kRightToe);

    const Rotation& pelvis = pose.local[kHips];
    const Vec3 hip = HipAt(side, cycles, skeleton_[kLeftUpLeg].offset);
    const FootPlacement plan = feet_.At(side, cycles);
    const Vec3 hinge = TurnXyz(skeleton_[leg].axis) * Vec3{1, 0, 0};
    const LegBend bend = Reach(plan.ankle - hip, TurnY(Sign(side) * kKneeOut) * Vec3{0, 0, 1},
                               Normalized(skeleton_[leg].offset), hinge,
                               Length(skeleton_[leg].offset), Length(skeleton_[foot].offset));
    pose.local[upLeg] = Inverse(pelvis) * bend.thigh;
    pose.local[leg] = TurnAbout(hinge, bend.knee);
    pose.local[foot] = Inverse(bend.thigh * pose.local[leg]) * plan.rotation;
    pose.local[toe] = TurnX(-plan.toeBend);
}

// The angles of shoulder and elbow are adapted from Murray, Sepic and Barnard (1967). The arm is
// furthest back when the foot of the same side lands. The elbow bends while the arm swings forward.
void GaitModel::PoseArm(Side side, double cycles, Pose& pose) const {
    constexpr double kHang = 78;  // degrees by which the arm is lowered from the T-pose
    // The angle, in degrees, by which the upper arm turns about its long axis. It makes the bent
    // forearm point inwards.
    constexpr double kInward = 8;
    const double sign = Sign(side);
    const double own = OwnCycles(side, cycles);
    const auto id = [side](JointId left, JointId right) { return OfSide(side, left, right); };
    const JointId shoulder = id(kLeftShoulder, kRightShoulder);
    const JointId arm = id(kLeftArm, kRightArm);
    const JointId foreArm = id(kLeftForeArm, kRightForeArm);
    const JointId hand = id(kLeftHand, kRightHand);

    const double back = OncePerCycle(own, 0.02);
    const double flexion = -5.0 - 16.0 * back;
    const double elbow = 24.0 - 9.0 * OncePerCycle(own, 0.06);
    const double wrist = 6.0 - 4.0 * OncePerCycle(own, 0.12);
    pose.local[shoulder] =
        FromAxisFrame(skeleton_[shoulder], TurnZ(sign * -4.0) * TurnY(sign * 2.0 * back));
    pose.local[arm] = TurnX(-flexion) * TurnZ(sign * -kHang) * TurnX(kInward);
    pose.local[foreArm] = FromAxisFrame(skeleton_[foreArm], TurnX(elbow));
    pose.local[hand] = FromAxisFrame(skeleton_[hand], TurnZ(sign * -wrist) * TurnX(4.0));
}

}  // namespace examples
