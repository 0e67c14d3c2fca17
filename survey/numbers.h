// A long list of numbers that can grow without being set.
#pragma once

#include <cstddef>
#include <new>
#include <utility>
#include <vector>

#include "memory/large_memory.h"

namespace survey {

// Asks for large pages, and leaves a number unset unless it is given a value. Otherwise, getting
// the memory and setting it would take about as long as computing the numbers.
template <class Number>
struct LargeAllocator {
    using value_type = Number;

    LargeAllocator() = default;
    template <class Other>
    explicit LargeAllocator(const LargeAllocator<Other>& /*other*/) noexcept {}

    Number* allocate(std::size_t count) {
        if (count > static_cast<std::size_t>(-1) / sizeof(Number)) throw std::bad_alloc();
        memory::LargeMemory memory = memory::AllocateLargeMemory(count * sizeof(Number));
        if (!memory) throw std::bad_alloc();
        return static_cast<Number*>(memory.release());
    }
    void deallocate(Number* memory, std::size_t /*count*/) noexcept {
        memory::LargeMemoryRelease()(memory);
    }

    template <class Other>
    void construct(Other* at) noexcept {
        ::new (static_cast<void*>(at)) Other;
    }
    template <class Other, class... Values>
    void construct(Other* at, Values&&... values) {
        ::new (static_cast<void*>(at)) Other(std::forward<Values>(values)...);
    }

    bool operator==(const LargeAllocator& /*other*/) const { return true; }
};

// Numbers(count) and resize(count) leave new numbers unset.
using Numbers = std::vector<double, LargeAllocator<double>>;

}  // namespace survey
