// The vector loops that this processor can run, so that a test can compare all of them.
#pragma once

#include <vector>

template <class Kernel>
struct KernelRow {
    const char* name;
    const Kernel* kernel;
};

// `avx2` is null if the program is built for another kind of processor.
template <class Kernel>
std::vector<KernelRow<Kernel>> KernelRows(const Kernel& plain, const Kernel* avx2) {
    std::vector<KernelRow<Kernel>> rows = {{"plain", &plain}};
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (avx2 && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma"))
        rows.push_back({"avx2", avx2});
#endif
    return rows;
}
