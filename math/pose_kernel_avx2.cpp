// The vector loops for poses, for processors with AVX2 and FMA. They are only called on such
// processors.
#define POSE_KERNEL kPoseKernelAvx2
#include "math/pose_kernel.inc"
