// The loops for processors with AVX2; compiled for those alone and called on those alone.
#define ROTATION_KERNEL RotationKernelAvx2
#include "math/rotation_kernel.inc"
