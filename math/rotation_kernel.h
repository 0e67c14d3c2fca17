// The vector loops that ConvertRotations uses. They are compiled once for each instruction set.
#pragma once

#include "math/rotation_batch.h"

struct RotationKernelResult {
    alignas(64) double angle[3][kRotationBlock];  // X-Y-Z, degrees
    // The magnitude of the cosine of the pitch angle, angle[1]. If it is small, the rotation is
    // close to gimbal lock.
    alignas(64) double cosine[kRotationBlock];
};

using RotationKernel = void (*)(const RotationBlock&, const RotationProduct&,
                                RotationKernelResult&);

void RotationKernelPlain(const RotationBlock& block, const RotationProduct& product,
                         RotationKernelResult& result);
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
void RotationKernelAvx2(const RotationBlock& block, const RotationProduct& product,
                        RotationKernelResult& result);
#endif
