#include "memory/large_memory.h"

#include <cstdint>
#include <new>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace memory {
namespace {

constexpr std::align_val_t kAlignment{64};

}  // namespace

// madvise is only a hint; a failure is ignored.
void AskForLargePages([[maybe_unused]] void* memory, [[maybe_unused]] std::size_t bytes) {
#if defined(__linux__)
    constexpr std::uintptr_t kPage = 4096;
    constexpr std::size_t kLargePage = std::size_t{2} << 20;
    if (bytes < kLargePage) return;
    const std::uintptr_t unaligned = reinterpret_cast<std::uintptr_t>(memory) % kPage;
    const std::size_t skipped = unaligned == 0 ? 0 : kPage - unaligned;
    madvise(static_cast<char*>(memory) + skipped, (bytes - skipped) / kPage * kPage, MADV_HUGEPAGE);
#endif
}

void LargeMemoryRelease::operator()(void* memory) const {
    ::operator delete(memory, kAlignment);
}

LargeMemory AllocateLargeMemory(std::size_t bytes) {
    LargeMemory memory(::operator new(bytes, kAlignment, std::nothrow));
    if (memory) AskForLargePages(memory.get(), bytes);
    return memory;
}

}  // namespace memory
