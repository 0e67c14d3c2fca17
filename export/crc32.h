// Computes CRC-32s as ZIP archives have them (ISO 3309).
// Internal to export/.
#pragma once

#include <cstdint>
#include <string_view>

namespace exporters {

// Continues a CRC-32. `crc` is the CRC-32 of all bytes before `bytes`, or 0 if there are none.
// Returns the CRC-32 of these bytes and `bytes` together.
std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes);
// Returns the CRC-32 of bytes that are followed by `size` others. `first` is the CRC-32 of the
// bytes before, and `second` is the one of the others.
std::uint32_t JoinCrc32(std::uint32_t first, std::uint32_t second, std::uint64_t size);

// Crc32 calls one of these two. They return the same.
std::uint32_t Crc32Plain(std::uint32_t crc, std::string_view bytes);
#ifdef ZKMOCAP_HAVE_CLMUL_KERNEL
// Multiplies polynomials with instructions of their own: the processor must have pclmulqdq.
std::uint32_t Crc32Clmul(std::uint32_t crc, std::string_view bytes);
#endif

}  // namespace exporters
