// A program that links this has its own operators new and delete: malloc and free, counted, and
// failing on request. Libraries that it loads use them too.
#pragma once

#include <atomic>
#include <cstddef>

namespace support {

// In bytes as malloc has them; of the whole program, from its start.
struct MemoryUse {
    std::atomic<std::size_t> live = 0;
    std::atomic<std::size_t> peak = 0;
    std::atomic<std::size_t> allocations = 0;
};
extern MemoryUse memoryUse;

// Whether the allocation fails that the code at `caller` asks for. Null, as it starts: none does.
extern bool (*failsAllocation)(const void* caller);

}  // namespace support
