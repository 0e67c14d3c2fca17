// Memory for arrays as large as a file.
#pragma once

#include <cstddef>
#include <memory>

namespace memory {

struct LargeMemoryRelease {
    void operator()(void* memory) const;
};
using LargeMemory = std::unique_ptr<void, LargeMemoryRelease>;

// `bytes` of uninitialised memory, aligned to 64 bytes; null where there is none. From 2 MiB on the
// system is asked for large pages: the first touch of each page costs more than the work on its
// bytes, and one large page replaces many small ones.
LargeMemory AllocateLargeMemory(std::size_t bytes);

}  // namespace memory
