// The vector loops for the angles of poses, for any processor that the program is built for.
#define ANGLE_KERNEL kAngleKernelPlain
#include "math/angle_kernel.inc"
