// The vector loops for poses, for any processor that the program is built for.
#define POSE_KERNEL kPoseKernelPlain
#include "math/pose_kernel.inc"
