#pragma once

#include <cstddef>

#include "memory/large_memory.h"

namespace memory {

// The bytes of a text, followed by a NUL. They may be changed.
class TextMemory {
  public:
    TextMemory() = default;
    TextMemory(TextMemory&& other) noexcept;
    TextMemory& operator=(TextMemory&& other) noexcept;
    ~TextMemory();

    // Returns memory for `bytes` uninitialised bytes, or an empty object when memory runs out.
    static TextMemory Allocate(std::size_t bytes);
    // Maps the first `bytes` bytes of an open file, which must have at least as many. Changes of
    // the memory do not change the file. If another process shortens the file while it is mapped,
    // reading the lost part raises SIGBUS. Returns an empty object if the file cannot be mapped.
    static TextMemory Map(int file, std::size_t bytes);

    explicit operator bool() const { return data_ != nullptr; }
    char* Data() const { return data_; }

  private:
    char* data_ = nullptr;
    LargeMemory allocated_;
    std::size_t mappedBytes_ = 0;  // 0 if the memory is not mapped
};

}  // namespace memory
