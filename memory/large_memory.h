// Memory for arrays as large as a file.
#pragma once

#include <cstddef>
#include <memory>

namespace memory {

struct LargeMemoryRelease {
    void operator()(void* memory) const;
};
using LargeMemory = std::unique_ptr<void, LargeMemoryRelease>;

// Returns `bytes` bytes of uninitialised memory, aligned to 64 bytes; null when memory runs out.
// From 2 MiB on, the system is asked for large pages, because the first access to a page takes
// longer than the work on its bytes, and one large page replaces many small ones.
LargeMemory AllocateLargeMemory(std::size_t bytes);

}  // namespace memory
