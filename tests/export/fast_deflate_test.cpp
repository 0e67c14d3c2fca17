#include "export/fast_deflate.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>

#include "tests/export/inflate.h"

namespace {

using exported::Inflate;

TEST(FastDeflate, IsInflatedToTheSameBytes) {
    std::uint32_t state = 1;
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{262143}, std::size_t{262144},
          std::size_t{262145}, std::size_t{1500000}}) {
        std::string bytes(size, '\0');
        for (std::size_t index = 0; index < size; ++index) {
            state = state * 1664525U + 1013904223U;
            // One half is random, the other is easy to compress.
            bytes[index] = static_cast<char>(index % 2 == 0 ? state >> 24U : index >> 12U);
        }
        EXPECT_EQ(Inflate(exporters::FastDeflate(bytes), size), bytes) << size;
    }
}

// Random bytes, of which one in `replaced` becomes 0. Only bytes that a code cannot shorten are
// stored as they are, which adds a few bytes to each piece.
TEST(FastDeflate, StoresOnlyNoise) {
    constexpr std::size_t kSize = 1'000'000;
    for (const std::size_t replaced : {0, 30, 10, 2}) {
        std::string bytes(kSize, '\0');
        std::uint64_t state = 1;
        for (char& byte : bytes) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            if (replaced == 0 || (state >> 33U) % replaced != 0)
                byte = static_cast<char>(state >> 56U);
        }
        const std::string packed = exporters::FastDeflate(bytes);
        EXPECT_EQ(Inflate(packed, kSize), bytes) << replaced;
        const std::size_t saved = replaced == 0 ? 0 : kSize / (20 * replaced);
        EXPECT_LT(packed.size(), kSize + 500 - saved) << replaced;
    }
}

}  // namespace
