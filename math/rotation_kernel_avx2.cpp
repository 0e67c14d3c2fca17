// The vector loops for processors with AVX2 and FMA. They are only called on such processors.
#define ROTATION_KERNEL RotationKernelAvx2
#include "math/rotation_kernel.inc"
