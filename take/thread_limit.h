// How many threads an import may use.
#pragma once

#include <cstddef>

namespace take {

// The most threads that LimitThreads accepts.
inline constexpr std::size_t kMostThreads = 1000;

// From now on, each import of this process uses `count` threads, from 1 to kMostThreads. Without a
// call, an import uses as many threads as there are processors, but fewer for short files. The
// results are the same for any number. The function sets the environment variable
// ZKMOCAP_THREADS, which the plug-in reads when it begins an import. So no other thread may use the
// environment meanwhile.
void LimitThreads(std::size_t count);

// Whether the environment says how many threads an import uses.
bool IsThreadCountSet();

}  // namespace take
