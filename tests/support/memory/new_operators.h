// Operators new and delete that count allocations and can make them fail. They replace those of the
// program that links this, and of the libraries that it loads.
#pragma once

#include <atomic>
#include <cstddef>

namespace support {

// The memory of the whole program since its start, in bytes as malloc counts them.
struct MemoryUse {
    std::atomic<std::size_t> live = 0;
    std::atomic<std::size_t> peak = 0;
    std::atomic<std::size_t> allocations = 0;
};
extern MemoryUse memoryUse;

// Decides whether an allocation fails. `caller` is the return address of the operator. While the
// pointer is null, as at the start, no allocation fails.
extern bool (*failsAllocation)(const void* caller);

}  // namespace support
