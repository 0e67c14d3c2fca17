#include "export/crc32.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace crc32_test {

using Kernel = std::uint32_t (*)(std::uint32_t crc, std::string_view bytes);

// All that this processor can run.
std::vector<Kernel> Kernels() {
    std::vector<Kernel> kernels = {exporters::Crc32, exporters::Crc32Plain};
#ifdef ZKMOCAP_HAVE_CLMUL_KERNEL
    if (__builtin_cpu_supports("pclmul")) kernels.push_back(exporters::Crc32Clmul);
#endif
    return kernels;
}

// The definition: one bit after the other.
std::uint32_t BitByBit(std::uint32_t crc, std::string_view bytes) {
    crc = ~crc;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

TEST(Crc32, IsTheStandardOne) {
    for (const Kernel kernel : Kernels()) {
        EXPECT_EQ(kernel(0, "123456789"), 0xCBF43926U);
        EXPECT_EQ(kernel(kernel(0, "12345"), "6789"), 0xCBF43926U);
        EXPECT_EQ(kernel(7, ""), 7U);
    }
}

// Every length up to some blocks, at every offset from an aligned address, after other bytes.
TEST(Crc32, IsTheSameBitByBit) {
    std::mt19937 random(1);
    std::string bytes(400, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    for (std::size_t first = 0; first < 17; ++first) {
        for (std::size_t size = 0; size <= 300; ++size) {
            const std::string_view text = std::string_view(bytes).substr(first, size);
            const auto before = static_cast<std::uint32_t>(random());
            const std::uint32_t expected = BitByBit(before, text);
            for (const Kernel kernel : Kernels())
                ASSERT_EQ(kernel(before, text), expected) << first << ' ' << size;
        }
    }
}

TEST(Crc32, IsTheSameInPieces) {
    std::mt19937 random(2);
    std::string bytes(100'000, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    const std::uint32_t expected = exporters::Crc32Plain(0, bytes);
    for (const Kernel kernel : Kernels()) {
        EXPECT_EQ(kernel(0, bytes), expected);
        for (int round = 0; round < 20; ++round) {
            std::uint32_t crc = 0;
            std::string_view rest = bytes;
            while (!rest.empty()) {
                const std::size_t size = std::min<std::size_t>(rest.size(), random() % 5000);
                crc = kernel(crc, rest.substr(0, size));
                rest.remove_prefix(size);
            }
            ASSERT_EQ(crc, expected);
        }
    }
}

TEST(Crc32, IsJoined) {
    EXPECT_EQ(exporters::JoinCrc32(exporters::Crc32(0, "12345"), exporters::Crc32(0, "6789"), 4),
              0xCBF43926U);
    EXPECT_EQ(exporters::JoinCrc32(7, 0, 0), 7U);
}

}  // namespace crc32_test
