// An array of numbers that may be large.
// Internal to export/.
#pragma once

#include <cstddef>
#include <limits>
#include <new>

#include "memory/large_memory.h"

namespace exporters {

// The numbers are not initialised, and the system is asked for large pages (see
// memory/large_memory.h).
template <class Number>
class LargeArray {
  public:
    LargeArray() = default;
    // Throws std::bad_alloc if there is not enough memory.
    explicit LargeArray(std::size_t size) : size_(size) {
        if (size > std::numeric_limits<std::size_t>::max() / sizeof(Number)) throw std::bad_alloc();
        memory_ = memory::AllocateLargeMemory(size * sizeof(Number));
        if (!memory_) throw std::bad_alloc();
    }

    std::size_t size() const { return size_; }
    const Number* data() const { return static_cast<const Number*>(memory_.get()); }
    Number& operator[](std::size_t index) { return static_cast<Number*>(memory_.get())[index]; }

  private:
    memory::LargeMemory memory_;
    std::size_t size_ = 0;
};

}  // namespace exporters
