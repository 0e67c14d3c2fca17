// A CRC-32 is the remainder of a polynomial whose coefficients are the bits of the text. The first
// bit is that of the highest power. Adding a multiple of the divisor does not change the remainder,
// so a block at the start of the text can be replaced by another one that is nearer to its end: by
// the product of the block and of the remainder of the power of x by which it moves. The method is
// that of V. Gopal and others, "Fast CRC Computation for Generic Polynomials Using PCLMULQDQ
// Instruction", Intel 2009.
#include <cstddef>
#include <immintrin.h>

#include "export/crc32.h"

namespace exporters {
namespace {

constexpr std::size_t kBlock = 16;        // bytes
constexpr std::size_t kBlocksAtOnce = 4;  // that move at the same time
constexpr std::size_t kLongMove = kBlock * kBlocksAtOnce;

// The remainder of x to the power of `exponent`. As in all numbers here, the highest bit is the
// coefficient of the lowest power. A product of two such numbers is one bit too low, so the
// remainder is one bit higher.
constexpr long long RemainderOfPower(std::size_t exponent) {
    constexpr std::uint32_t kDivisor = 0xEDB88320;
    std::uint32_t remainder = 0x80000000;
    for (; exponent > 0; --exponent)
        remainder = (remainder >> 1U) ^ ((remainder & 1U) != 0 ? kDivisor : 0);
    return static_cast<long long>(std::uint64_t{remainder} << 1U);
}

// Moves a block towards the end of the text. The first eight bytes of a block, its lower half, have
// powers that are higher by 64. The product of 64 and of 32 bits is where 32 powers are missing.
template <std::size_t kBytes>
__m128i Moved(__m128i block) {
    constexpr long long kFirst = RemainderOfPower(8 * kBytes + 32);
    constexpr long long kSecond = RemainderOfPower(8 * kBytes - 32);
    const __m128i powers = _mm_set_epi64x(kSecond, kFirst);
    return _mm_xor_si128(_mm_clmulepi64_si128(block, powers, 0x00),
                         _mm_clmulepi64_si128(block, powers, 0x11));
}

__m128i Block(const char* at) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
}

}  // namespace

std::uint32_t Crc32Clmul(std::uint32_t crc, std::string_view bytes) {
    if (bytes.size() < kLongMove) return Crc32Plain(crc, bytes);
    const char* at = bytes.data();
    const char* const last = at + bytes.size();
    __m128i blocks[kBlocksAtOnce];
    for (std::size_t i = 0; i < kBlocksAtOnce; ++i)
        blocks[i] = Block(at + i * kBlock);
    // A CRC-32 is stored with all bits inverted, and is added to the first bytes that follow.
    blocks[0] = _mm_xor_si128(blocks[0], _mm_cvtsi32_si128(static_cast<int>(~crc)));
    for (at += kLongMove; last - at >= static_cast<std::ptrdiff_t>(kLongMove); at += kLongMove)
        for (std::size_t i = 0; i < kBlocksAtOnce; ++i)
            blocks[i] = _mm_xor_si128(Moved<kLongMove>(blocks[i]), Block(at + i * kBlock));
    __m128i block = blocks[0];
    for (std::size_t i = 1; i < kBlocksAtOnce; ++i)
        block = _mm_xor_si128(Moved<kBlock>(block), blocks[i]);
    for (; last - at >= static_cast<std::ptrdiff_t>(kBlock); at += kBlock)
        block = _mm_xor_si128(Moved<kBlock>(block), Block(at));

    // The remainder of the last block is that of all bytes so far.
    char remainder[kBlock];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(remainder), block);
    constexpr std::uint32_t kNothing = 0xFFFFFFFF;  // all bits of 0 inverted
    const std::uint32_t soFar = Crc32Plain(kNothing, {remainder, kBlock});
    return Crc32Plain(soFar, {at, static_cast<std::size_t>(last - at)});
}

}  // namespace exporters
