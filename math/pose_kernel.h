// The vector loops for poses. They are compiled once for each instruction set.
#pragma once

#include "math/pose_lanes.h"

namespace math {

// In degrees. The vector loops reduce angles below this without rounding.
inline constexpr double kLargestLaneAngle = 1e9;

struct PoseKernel {
    // Returns false if an angle is not below kLargestLaneAngle; its lane then has no meaning.
    bool (*turn)(const AngleLanes& angles, PoseLanes& pose);
    void (*attach)(const PoseLanes& parent, const PoseLanes& local, PoseLanes& global);
    void (*compare)(const PoseLanes& pose, double (&cosines)[kPoseLanes]);
    bool (*areFinite)(const PoseLanes& pose);
};

extern const PoseKernel kPoseKernelPlain;
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
extern const PoseKernel kPoseKernelAvx2;
#endif

}  // namespace math
