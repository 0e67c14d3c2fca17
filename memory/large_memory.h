// Memory for large arrays, such as the contents of a file.
#pragma once

#include <cstddef>
#include <memory>

namespace memory {

struct LargeMemoryRelease {
    void operator()(void* memory) const;
};
using LargeMemory = std::unique_ptr<void, LargeMemoryRelease>;

// Returns `bytes` bytes of uninitialised memory, aligned to 64 bytes; null when memory runs out. If
// it is 2 MiB or more, the system is asked to use large pages. The first access to each page is
// slow, and one large page replaces many small ones.
LargeMemory AllocateLargeMemory(std::size_t bytes);

// Asks the system to use large pages for memory that was got elsewhere, if it is 2 MiB or more.
void AskForLargePages(void* memory, std::size_t bytes);

}  // namespace memory
