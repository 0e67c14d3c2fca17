// The walker: a T-pose of 22 joints, facing +Z with +Y up and its left at +X.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "examples/rotation.h"

namespace examples {

// In the order of the files: parents first, depth first.
enum JointId : std::size_t {
    kHips,
    kLeftUpLeg,
    kLeftLeg,
    kLeftFoot,
    kLeftToe,
    kRightUpLeg,
    kRightLeg,
    kRightFoot,
    kRightToe,
    kSpine,
    kSpine1,
    kSpine2,
    kNeck,
    kHead,
    kLeftShoulder,
    kLeftArm,
    kLeftForeArm,
    kLeftHand,
    kRightShoulder,
    kRightArm,
    kRightForeArm,
    kRightHand,
    kJointCount
};

struct Limit {
    double min;  // degrees
    double max;
};

struct Joint {
    std::string name;
    JointId parent;  // kHips for itself
    Vec3 offset;     // cm from the parent's joint, in the T-pose; of the hips, from the floor
    Vec3 end;        // cm from this joint to its end site; zero where the joint has children
    Vec3 axis;       // degrees, x first: the frame the joint's freedom and limits speak of
    std::string_view free;        // the axes of that frame it can turn about, of "xyz"
    std::array<Limit, 3> limits;  // by x, y, z; of an axis it cannot turn about, without meaning
};

using Skeleton = std::vector<Joint>;

// The joints in the order of JointId. The right side mirrors the left.
Skeleton MakeSkeleton();

// The foot's points of contact from the ankle, cm, in the T-pose of either side.
struct FootContacts {
    Vec3 heel;
    Vec3 ball;  // the toe joint
    Vec3 tip;   // the end of the toe
};
FootContacts MakeFootContacts();

}  // namespace examples
