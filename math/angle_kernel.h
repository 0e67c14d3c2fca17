// The vector loops for the angles of poses. They are compiled once for each instruction set.
#pragma once

#include "math/pose_lanes.h"

namespace math {

struct AngleKernel {
    void (*angles)(const PoseLanes& pose, AngleLanes& angles);
    void (*bvhAngles)(const PoseLanes& pose, AngleLanes& angles, double (&cosines)[kPoseLanes]);
};

extern const AngleKernel kAngleKernelPlain;
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
extern const AngleKernel kAngleKernelAvx2;
#endif

}  // namespace math
