// The vector loops for the angles of poses. They are compiled once for each instruction set.
#pragma once

#include "math/pose_lanes.h"

using AngleKernel = void (*)(const math::PoseLanes&, math::AngleLanes&);

void AngleKernelPlain(const math::PoseLanes& pose, math::AngleLanes& angles);
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
void AngleKernelAvx2(const math::PoseLanes& pose, math::AngleLanes& angles);
#endif
