// The vector loops for any processor that the program is built for.
#define ROTATION_KERNEL RotationKernelPlain
#include "math/rotation_kernel.inc"
