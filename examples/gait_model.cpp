#include "examples/gait_model.h"

#include <cmath>
#include <numbers>
#include <stdexcept>

#include "examples/trunk.h"

namespace examples {
namespace {

constexpr double kDegrees = 180 / std::numbers::pi;

// The time in cycles since a contact of the foot of that side.
double OwnCycles(Side side, double cycles) {
    return side == Side::kLeft ? cycles : cycles + 0.5;
}

JointId OfSide(Side side, JointId left, JointId right) {
    return side == Side::kLeft ? left : right;
}

// Converts a rotation in a joint's own frame to the frame of the T-pose.
Rotation InAxisFrame(const Joint& joint, const Rotation& turn) {
    const Rotation frame = TurnXyz(joint.axis);
    return frame * turn * Inverse(frame);
}

struct LegBend {
    Rotation thigh;  // from the T-pose to the world
    double knee;     // degrees
};

// Bends a straight leg so that it reaches from the hip to the ankle, its knee pointing towards
// `ahead`. `down` and `hinge` are the leg's line and the axis its knee bends about in the T-pose,
// unit vectors at a right angle.
LegBend Reach(const Vec3& hipToAnkle, const Vec3& ahead, const Vec3& down, const Vec3& hinge,
              double thigh, double shank) {
    const double reach = Length(hipToAnkle);
    const double cosine = (reach * reach - thigh * thigh - shank * shank) / (2 * thigh * shank);
    if (cosine > 1) throw std::logic_error("a foot is planned out of its leg's reach");
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
    // The three joints of the spine, and the two of the neck, share the rotation between their
    // ends.
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
    constexpr double kKneeOut = 3.0;  // degrees: less than the foot points outwards
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

// Shoulder and elbow after Murray, Sepic and Barnard (1967): the arm is furthest back when the foot
// of its own side lands, and the elbow bends as it comes forward.
void GaitModel::PoseArm(Side side, double cycles, Pose& pose) const {
    constexpr double kHang = 78;   // degrees from the T-pose down to the side
    constexpr double kInward = 8;  // degrees: the forearm swings a little across
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
        InAxisFrame(skeleton_[shoulder], TurnZ(sign * -4.0) * TurnY(sign * 2.0 * back));
    pose.local[arm] = TurnX(-flexion) * TurnZ(sign * -kHang) * TurnX(kInward);
    pose.local[foreArm] = InAxisFrame(skeleton_[foreArm], TurnX(elbow));
    pose.local[hand] = InAxisFrame(skeleton_[hand], TurnZ(sign * -wrist) * TurnX(4.0));
}

}  // namespace examples
