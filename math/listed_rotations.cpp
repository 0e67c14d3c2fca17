#include "math/listed_rotations.h"

#include <cmath>

#include "math/listed_kernel.h"
#include "math/pose_kernel.h"

namespace math {
namespace {

const ListedKernel& ChooseListedKernel() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma")) return kListedKernelAvx2;
#endif
    return kListedKernelPlain;
}

const ListedKernel& OfLists() {
    static const ListedKernel& kernel = ChooseListedKernel();
    return kernel;
}

}  // namespace

void AnglesOfListed(const std::array<std::size_t, 3>& axes, std::size_t count,
                    const AngleLanes& listed, AngleLanes& angles, double (&cosines)[kPoseLanes]) {
    if (OfLists().angles(axes.data(), count, listed, angles, cosines)) return;
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            if (!(std::abs(listed.angle[i][lane]) < kLargestLaneAngle)) cosines[lane] = 0.0;
}

}  // namespace math
