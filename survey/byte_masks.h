// Classifies the bytes of blocks of text. Each mask has one bit for each byte of a block: bit i is
// set if byte i is of that kind. There is one kernel for each instruction set; all kernels give the
// same masks.
#pragma once

#include <cstddef>
#include <cstdint>

namespace survey {

inline constexpr std::size_t kMaskBlock = 64;  // bytes

struct ByteMasks {
    std::uint64_t digits = 0;
    std::uint64_t points = 0;
    std::uint64_t minuses = 0;
    std::uint64_t lineEnds = 0;  // line feeds and carriage returns
    std::uint64_t white = 0;     // line ends, spaces and tabs
};

// `text` has `blocks` blocks of kMaskBlock bytes each. `masks` receives one item for each block.
using ByteMasksKernel = void (*)(const char* text, std::size_t blocks, ByteMasks* masks);

void ByteMasksPlain(const char* text, std::size_t blocks, ByteMasks* masks);
#ifdef __SSE2__
void ByteMasksSse2(const char* text, std::size_t blocks, ByteMasks* masks);
#endif
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
void ByteMasksAvx2(const char* text, std::size_t blocks, ByteMasks* masks);
#endif

// The fastest kernel that this processor can run.
ByteMasksKernel ChooseByteMasks();

}  // namespace survey
