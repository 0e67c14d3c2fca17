#include "survey/acclaim_rotations.h"

#include <cmath>
#include <cstring>

#include "math/angles.h"
#include "math/rotation_math.h"
#include "survey/codes.h"

namespace survey {
namespace {

// If the cosine of the second angle is at most this, the first and the third angle count as
// rotating about the same axis.
constexpr double kGimbalLock = 1e-12;

void SetRotation(double m[4][4], char axis, double angle) {
    if (axis == 'X') MatrixRotationX(m, angle);
    if (axis == 'Y') MatrixRotationY(m, angle);
    if (axis == 'Z') MatrixRotationZ(m, angle);
}

void Reexpress(AsfBone& bone, double radiansPerUnit) {
    double product[4][4];
    MatrixIdentity(product);
    for (std::size_t i = 0; i < 3; ++i) {
        double rotation[4][4];
        double next[4][4];
        SetRotation(rotation, bone.axisOrder[i], bone.axis[i].value * radiansPerUnit);
        MatrixMult(product, rotation, next);
        std::memcpy(product, next, sizeof(product));
    }
    double angles[3];
    AnglesOf(product, angles);
    for (std::size_t i = 0; i < 3; ++i)
        bone.axis[i] = {angles[i] / radiansPerUnit, {}};
    bone.axisOrder = {'X', 'Y', 'Z'};
}

}  // namespace

double RadiansPerUnit(bool degrees) {
    return degrees ? math::kRadiansPerDegree : 1.0;
}

void AnglesOf(const double m[4][4], double angles[3]) {
    const double cosine = std::hypot(m[0][0], m[0][1]);
    angles[1] = std::atan2(-m[0][2], cosine);
    if (cosine > kGimbalLock) {
        angles[0] = std::atan2(m[1][2], m[2][2]);
        angles[2] = std::atan2(m[0][1], m[0][0]);
    } else {
        angles[0] = std::atan2(-m[2][1], m[1][1]);
        angles[2] = 0.0;
    }
}

void ReexpressAxes(AsfSkeleton& skeleton, FindingList& findings) {
    constexpr std::array<char, 3> kXyz = {'X', 'Y', 'Z'};
    for (AsfBone& bone : skeleton.bones) {
        if (bone.axisOrder == kXyz) continue;
        skeleton.changed = true;
        const std::string order(bone.axisOrder.begin(), bone.axisOrder.end());
        Reexpress(bone, RadiansPerUnit(skeleton.degrees));
        if (!findings.AddAgain(codes::kAxisOrder, Severity::Note))
            findings.Add({codes::kAxisOrder, Severity::Note, bone.axisAt,
                          "the axis of \"" + bone.name + "\" is in the order " + order +
                              "; it is re-expressed as XYZ",
                          bone.name, true});
    }
}

}  // namespace survey
