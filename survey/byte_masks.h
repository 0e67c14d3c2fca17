// Which bytes of a block of text are of which kind, as bits: bit i is byte i. Each instruction set
// has its own copy of the loop.
#pragma once

#include <cstddef>
#include <cstdint>

namespace survey {

inline constexpr std::size_t kMaskBlock = 64;

struct ByteMasks {
    std::uint64_t digits = 0;
    std::uint64_t points = 0;
    std::uint64_t minuses = 0;
    std::uint64_t lineEnds = 0;  // line feeds and carriage returns
    std::uint64_t white = 0;     // these, blanks and tabs
};

// `text` holds `blocks` blocks of kMaskBlock bytes.
using ByteMasksKernel = void (*)(const char* text, std::size_t blocks, ByteMasks* masks);

void ByteMasksPlain(const char* text, std::size_t blocks, ByteMasks* masks);
#ifdef __SSE2__
void ByteMasksSse2(const char* text, std::size_t blocks, ByteMasks* masks);
#endif
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
void ByteMasksAvx2(const char* text, std::size_t blocks, ByteMasks* masks);
#endif

// The fastest one that this processor runs.
ByteMasksKernel ChooseByteMasks();

}  // namespace survey
