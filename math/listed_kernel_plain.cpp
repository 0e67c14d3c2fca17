// The vector loops for rotations that are listed in any order, for any processor that the program
// is built for.
#define LISTED_KERNEL kListedKernelPlain
#include "math/listed_kernel.inc"
