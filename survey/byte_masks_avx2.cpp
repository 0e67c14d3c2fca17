// The kernel for AVX2. To be called only on processors that have AVX2.
#include <immintrin.h>

#include "survey/byte_masks.h"

namespace survey {
namespace {

struct Avx2Bytes {
    explicit Avx2Bytes(const char* text)
        : bytes(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(text))) {}

    __m256i Equal(char c) const { return _mm256_cmpeq_epi8(bytes, _mm256_set1_epi8(c)); }
    __m256i Digits() const {
        const __m256i value = _mm256_sub_epi8(bytes, _mm256_set1_epi8('0'));
        return _mm256_cmpeq_epi8(_mm256_min_epu8(value, _mm256_set1_epi8(9)), value);
    }
    static std::uint64_t Bits(__m256i mask) {
        return static_cast<std::uint32_t>(_mm256_movemask_epi8(mask));
    }

    __m256i bytes;
};

}  // namespace

void ByteMasksAvx2(const char* text, std::size_t blocks, ByteMasks* masks) {
    for (std::size_t block = 0; block < blocks; ++block) {
        ByteMasks found;
        for (unsigned part = 0; part < kMaskBlock; part += 32) {
            const Avx2Bytes bytes(text + block * kMaskBlock + part);
            const __m256i lineEnds = _mm256_or_si256(bytes.Equal('\n'), bytes.Equal('\r'));
            const __m256i blanks = _mm256_or_si256(bytes.Equal(' '), bytes.Equal('\t'));
            found.digits |= Avx2Bytes::Bits(bytes.Digits()) << part;
            found.points |= Avx2Bytes::Bits(bytes.Equal('.')) << part;
            found.minuses |= Avx2Bytes::Bits(bytes.Equal('-')) << part;
            found.lineEnds |= Avx2Bytes::Bits(lineEnds) << part;
            found.white |= Avx2Bytes::Bits(_mm256_or_si256(lineEnds, blanks)) << part;
        }
        masks[block] = found;
    }
}

}  // namespace survey
