#include "survey/byte_masks.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace survey {

void ByteMasksPlain(const char* text, std::size_t blocks, ByteMasks* masks) {
    for (std::size_t block = 0; block < blocks; ++block) {
        ByteMasks found;
        for (std::size_t i = 0; i < kMaskBlock; ++i) {
            const char c = text[block * kMaskBlock + i];
            const auto bit = [i](bool is) { return static_cast<std::uint64_t>(is) << i; };
            const bool isLineEnd = c == '\n' || c == '\r';
            found.digits |= bit(c >= '0' && c <= '9');
            found.points |= bit(c == '.');
            found.minuses |= bit(c == '-');
            found.lineEnds |= bit(isLineEnd);
            found.white |= bit(isLineEnd || c == ' ' || c == '\t');
        }
        masks[block] = found;
    }
}

#ifdef __SSE2__
namespace {

struct Sse2Bytes {
    explicit Sse2Bytes(const char* text)
        : bytes(_mm_loadu_si128(reinterpret_cast<const __m128i*>(text))) {}

    __m128i Equal(char c) const { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); }
    __m128i Digits() const {
        const __m128i value = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
        return _mm_cmpeq_epi8(_mm_min_epu8(value, _mm_set1_epi8(9)), value);
    }
    static std::uint64_t Bits(__m128i mask) {
        return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
    }

    __m128i bytes;
};

}  // namespace

void ByteMasksSse2(const char* text, std::size_t blocks, ByteMasks* masks) {
    for (std::size_t block = 0; block < blocks; ++block) {
        ByteMasks found;
        for (unsigned part = 0; part < kMaskBlock; part += 16) {
            const Sse2Bytes bytes(text + block * kMaskBlock + part);
            const __m128i lineEnds = _mm_or_si128(bytes.Equal('\n'), bytes.Equal('\r'));
            const __m128i blanks = _mm_or_si128(bytes.Equal(' '), bytes.Equal('\t'));
            found.digits |= Sse2Bytes::Bits(bytes.Digits()) << part;
            found.points |= Sse2Bytes::Bits(bytes.Equal('.')) << part;
            found.minuses |= Sse2Bytes::Bits(bytes.Equal('-')) << part;
            found.lineEnds |= Sse2Bytes::Bits(lineEnds) << part;
            found.white |= Sse2Bytes::Bits(_mm_or_si128(lineEnds, blanks)) << part;
        }
        masks[block] = found;
    }
}
#endif

ByteMasksKernel ChooseByteMasks() {
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (__builtin_cpu_supports("avx2")) return ByteMasksAvx2;
#endif
#ifdef __SSE2__
    return ByteMasksSse2;
#else
    return ByteMasksPlain;
#endif
}

}  // namespace survey
