#include "math/pose_lanes.h"

#include <algorithm>
#include <cmath>

#include "math/angle_kernel.h"
#include "math/angles.h"
#include "math/pose_kernel.h"

namespace math {
namespace {

#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
bool HasAvx2() {
    return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma");
}
#endif

const PoseKernel& ChooseKernel() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (HasAvx2()) return kPoseKernelAvx2;
#endif
    return kPoseKernelPlain;
}

const AngleKernel& ChooseAngleKernel() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (HasAvx2()) return kAngleKernelAvx2;
#endif
    return kAngleKernelPlain;
}

const AngleKernel& OfAngles() {
    static const AngleKernel& kernel = ChooseAngleKernel();
    return kernel;
}

const PoseKernel& Kernel() {
    static const PoseKernel& kernel = ChooseKernel();
    return kernel;
}

bool IsReducible(double degrees) {
    return std::abs(degrees) < kLargestLaneAngle;
}

}  // namespace

void TurnByAngles(const AngleLanes& angles, PoseLanes& pose) {
    if (Kernel().turn(angles, pose)) return;
    for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
        const double degrees[3] = {angles.angle[0][lane], angles.angle[1][lane],
                                   angles.angle[2][lane]};
        if (std::all_of(degrees, degrees + 3, IsReducible)) continue;
        double quaternion[4];
        TurnByAngles(degrees, quaternion);
        for (std::size_t part = 0; part < 4; ++part)
            pose.rotation[part][lane] = quaternion[part];
    }
}

void AttachPoses(const PoseLanes& parent, const PoseLanes& local, PoseLanes& global) {
    Kernel().attach(parent, local, global);
}

void CompareNeighbours(const PoseLanes& pose, double (&cosines)[kPoseLanes]) {
    Kernel().compare(pose, cosines);
}

void AnglesOf(const PoseLanes& pose, AngleLanes& angles) {
    OfAngles().angles(pose, angles);
}

void BvhAnglesOf(const PoseLanes& pose, AngleLanes& angles, double (&cosines)[kPoseLanes]) {
    OfAngles().bvhAngles(pose, angles, cosines);
}

bool AreFinite(const PoseLanes& pose) {
    return Kernel().areFinite(pose);
}

void TurnByAngles(const double degrees[3], double quaternion[4]) {
    double s[3];
    double c[3];
    for (int axis = 0; axis < 3; ++axis) {
        // Both steps are exact. Taking off a whole turn negates the quaternion, which then is that
        // of the same rotation.
        const double reduced = std::remainder(degrees[axis], kFullTurn);
        const bool isFar = std::abs(reduced) > 0.5 * kHalfTurn;
        const double rest = isFar ? reduced - std::copysign(kHalfTurn, reduced) : reduced;
        const double half = 0.5 * kRadiansPerDegree * rest;
        s[axis] = isFar ? std::cos(half) : std::sin(half);
        c[axis] = isFar ? -std::sin(half) : std::cos(half);
    }
    quaternion[0] = c[2] * c[1] * s[0] - s[2] * c[0] * s[1];
    quaternion[1] = c[2] * c[0] * s[1] + s[2] * c[1] * s[0];
    quaternion[2] = s[2] * c[0] * c[1] - c[2] * s[0] * s[1];
    quaternion[3] = c[2] * c[0] * c[1] + s[2] * s[0] * s[1];
}

}  // namespace math
