// The vector loops for rotations that are listed in any order, for processors with AVX2 and FMA.
// They are only called on such processors.
#define LISTED_KERNEL kListedKernelAvx2
#include "math/listed_kernel.inc"
