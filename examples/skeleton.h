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
    JointId parent;  // kHips is its own parent
    Vec3 offset;     // cm from the parent's joint, in the T-pose; of the hips, from the floor
    Vec3 end;        // cm from this joint to its end site; zero where the joint has children
    Vec3 axis;       // degrees, x acts first: the joint's own frame, used by `free` and `limits`
    std::string_view free;        // the axes that the joint can turn about, letters of "xyz"
    std::array<Limit, 3> limits;  // for x, y and z; unused for an axis that is not in `free`
};

using Skeleton = std::vector<Joint>;

// The joints in the order of JointId. The right side is the mirror image of the left side.
Skeleton MakeSkeleton();

// The points where the foot touches the ground, relative to the ankle, in cm. They are those of the
// T-pose, and the same for both sides.
struct FootContacts {
    Vec3 heel;
    Vec3 ball;  // the toe joint
    Vec3 tip;   // the end of the toe
};
FootContacts MakeFootContacts();

}  // namespace examples
