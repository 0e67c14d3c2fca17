#include "tests/support/memory/new_operators.h"

#include <cstdlib>
#include <malloc.h>
#include <new>

namespace support {

MemoryUse memoryUse;
bool (*failsAllocation)(const void* caller) = nullptr;

namespace {

void Count(std::size_t bytes) {
    ++memoryUse.allocations;
    const std::size_t live = memoryUse.live += bytes;
    std::size_t most = memoryUse.peak;
    while (most < live && !memoryUse.peak.compare_exchange_weak(most, live)) {
    }
}

// With `alignment` 0 the memory is aligned as malloc does it.
void* Allocate(std::size_t bytes, std::size_t alignment, const void* caller) noexcept {
    if (failsAllocation != nullptr && failsAllocation(caller)) return nullptr;
    if (bytes == 0) bytes = 1;
    void* const memory =
        alignment == 0
            ? std::malloc(bytes)
            : std::aligned_alloc(alignment, (bytes + alignment - 1) / alignment * alignment);
    if (memory != nullptr) Count(malloc_usable_size(memory));
    return memory;
}

void* AllocateOrThrow(std::size_t bytes, std::size_t alignment, const void* caller) {
    void* const memory = Allocate(bytes, alignment, caller);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void Release(void* memory) noexcept {
    if (memory != nullptr) memoryUse.live -= malloc_usable_size(memory);
    std::free(memory);
}

}  // namespace
}  // namespace support

#define CALLER __builtin_return_address(0)

void* operator new(std::size_t bytes) {
    return support::AllocateOrThrow(bytes, 0, CALLER);
}
void* operator new[](std::size_t bytes) {
    return support::AllocateOrThrow(bytes, 0, CALLER);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return support::Allocate(bytes, 0, CALLER);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return support::Allocate(bytes, 0, CALLER);
}
void* operator new(std::size_t bytes, std::align_val_t alignment) {
    return support::AllocateOrThrow(bytes, static_cast<std::size_t>(alignment), CALLER);
}
void* operator new[](std::size_t bytes, std::align_val_t alignment) {
    return support::AllocateOrThrow(bytes, static_cast<std::size_t>(alignment), CALLER);
}
void* operator new(std::size_t bytes, std::align_val_t alignment, const std::nothrow_t&) noexcept {
    return support::Allocate(bytes, static_cast<std::size_t>(alignment), CALLER);
}
void* operator new[](std::size_t bytes, std::align_val_t alignment,
                     const std::nothrow_t&) noexcept {
    return support::Allocate(bytes, static_cast<std::size_t>(alignment), CALLER);
}

void operator delete(void* memory) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory) noexcept {
    support::Release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    support::Release(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    support::Release(memory);
}
void operator delete(void* memory, std::align_val_t) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory, std::align_val_t) noexcept {
    support::Release(memory);
}
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept {
    support::Release(memory);
}
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    support::Release(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
    support::Release(memory);
}
