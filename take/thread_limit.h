// How many threads an import or an export may use.
#pragma once

#include <cstddef>

namespace take {

// The most threads that LimitThreads accepts.
inline constexpr std::size_t kMostThreads = 1000;

// From now on, each import of this process uses `count` threads, from 1 to kMostThreads, and each
// export at most as many, but neither more than 32. Without a call, they use as many threads as
// there are processors, but fewer for short motions. The results are the same for any number. The
// function sets the environment variable ZKMOCAP_THREADS, which the plug-in and the exporters read
// when they begin. So no other thread may use the environment meanwhile.
void LimitThreads(std::size_t count);

// Whether the environment says how many threads an import or an export uses.
bool IsThreadCountSet();

}  // namespace take
