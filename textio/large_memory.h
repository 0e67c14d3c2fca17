#pragma once

#include <cstddef>
#include <memory>

namespace textio {

struct LargeMemoryRelease {
    void operator()(void* memory) const;
};
using LargeMemory = std::unique_ptr<void, LargeMemoryRelease>;

// Uninitialised memory, in large pages where it is large enough for them and the system has them:
// new memory costs more than what is done with it, and a large page costs it once for many small
// ones. Null where there is none.
LargeMemory AllocateLargeMemory(std::size_t bytes);

}  // namespace textio
