// The vector loops for rotations that are listed in any order. They are compiled once for each
// instruction set.
#pragma once

#include <cstddef>

#include "math/pose_lanes.h"

namespace math {

struct ListedKernel {
    // Returns false if a listed angle is not below kLargestLaneAngle (pose_kernel.h); the cosine of
    // its lane then has no meaning.
    bool (*angles)(const std::size_t* axes, std::size_t count, const AngleLanes& listed,
                   AngleLanes& angles, double (&cosines)[kPoseLanes]);
};

extern const ListedKernel kListedKernelPlain;
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
extern const ListedKernel kListedKernelAvx2;
#endif

}  // namespace math
