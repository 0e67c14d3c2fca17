#include "memory/text_memory.h"

#include <limits>
#include <utility>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace memory {

TextMemory::TextMemory(TextMemory&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      allocated_(std::move(other.allocated_)),
      mappedBytes_(std::exchange(other.mappedBytes_, 0)) {}

TextMemory& TextMemory::operator=(TextMemory&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(allocated_, other.allocated_);
    std::swap(mappedBytes_, other.mappedBytes_);
    return *this;
}

TextMemory::~TextMemory() {
#if defined(__linux__)
    if (mappedBytes_ != 0) munmap(data_, mappedBytes_);
#endif
}

TextMemory TextMemory::Allocate(std::size_t bytes) {
    TextMemory text;
    // If std::size_t has 32 bits, the sum below would overflow for the largest possible text.
    if (bytes == std::numeric_limits<std::size_t>::max()) return text;
    text.allocated_ = AllocateLargeMemory(bytes + 1);
    text.data_ = static_cast<char*>(text.allocated_.get());
    if (text) text.data_[bytes] = '\0';
    return text;
}

// The NUL is in a page of zeros after the file's pages, or in the file's last page. Writing it
// there copies that page, so that the NUL stays even if the file becomes longer.
TextMemory TextMemory::Map([[maybe_unused]] int file, [[maybe_unused]] std::size_t bytes) {
    TextMemory text;
#if defined(__linux__)
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    if (bytes > std::numeric_limits<std::size_t>::max() - 2 * page) return text;
    const std::size_t all = (bytes / page + 2) * page;
    void* const memory =
        mmap(nullptr, all, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return text;
    text.data_ = static_cast<char*>(memory);
    text.mappedBytes_ = all;
    constexpr int kHow = MAP_PRIVATE | MAP_FIXED;
    if (mmap(memory, bytes, PROT_READ | PROT_WRITE, kHow, file, 0) == MAP_FAILED) return {};
    text.data_[bytes] = '\0';
#endif
    return text;
}

}  // namespace memory
