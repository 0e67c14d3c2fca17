// The skeleton of the walker. It has 22 joints. In its T-pose it faces +Z, +Y is up, and the left
// side is at +X.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "examples/rotation.h"

namespace examples {

// The joints in the order in which the files list them. Each parent comes before its children, and
// a whole branch comes before the next branch.
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

// The smallest and the largest angle of a joint about one axis, in degrees.
struct Limit {
    double min;
    double max;
};

struct Joint {
    std::string name;
    JointId parent;  // the hips have no parent; their `parent` is kHips
    // The vector from the parent to this joint in the T-pose, in cm. For the hips, the vector
    // starts on the floor.
    Vec3 offset;
    Vec3 end;  // the vector from this joint to its end site, in cm; zero if there is no end site
    // The angles, in degrees, that turn the world's axes to the joint's own axes in the T-pose.
    // TurnXyz(axis) is that rotation. `free` and `limits` are about the joint's own axes.
    Vec3 axis;
    std::string_view free;        // the axes that the joint can turn about, for example "xz"
    std::array<Limit, 3> limits;  // for x, y and z; unused if the axis is not in `free`
};

using Skeleton = std::vector<Joint>;

// Returns the joints. The index of a joint is its JointId. The right side is the mirror image of
// the left side.
Skeleton MakeSkeleton();

// The points of a foot on which it rolls over the ground. Each is a vector from the ankle in the
// T-pose, in cm. The left and the right foot have the same vectors.
struct FootContacts {
    Vec3 heel;
    Vec3 ball;  // the position of the toe joint
    Vec3 tip;   // the tip of the toe
};
FootContacts MakeFootContacts();

}  // namespace examples
