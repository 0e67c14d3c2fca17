// The vector loops for the angles of poses, for processors with AVX2 and FMA. They are only called
// on such processors.
#define ANGLE_KERNEL kAngleKernelAvx2
#include "math/angle_kernel.inc"
