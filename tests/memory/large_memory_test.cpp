#include "memory/large_memory.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>

namespace {

struct SizeRow {
    const char* name;
    std::size_t bytes;
};

constexpr SizeRow kSizes[] = {
    {"Nothing", 0},
    {"OneByte", 1},
    {"OneSmallPage", 4096},
    {"BelowALargePage", (std::size_t{2} << 20) - 1},
    {"OneLargePage", std::size_t{2} << 20},
    {"NoWholeNumberOfPages", (std::size_t{5} << 20) + 123},
};

class LargeMemorySize : public testing::TestWithParam<SizeRow> {};

TEST_P(LargeMemorySize, IsAlignedAndWritable) {
    const std::size_t bytes = GetParam().bytes;
    const memory::LargeMemory piece = memory::AllocateLargeMemory(bytes);
    ASSERT_NE(piece, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece.get()) % 64, 0u);
    auto* const first = static_cast<unsigned char*>(piece.get());
    for (std::size_t i = 0; i < bytes; ++i)
        first[i] = static_cast<unsigned char>(i % 251);
    for (std::size_t i = 0; i < bytes; ++i)
        ASSERT_EQ(first[i], i % 251) << i;
}

// The advice must not change what the memory holds, wherever it begins.
TEST_P(LargeMemorySize, KeepsItsContentWithLargePages) {
    std::string bytes(GetParam().bytes, 'x');
    memory::AskForLargePages(bytes.data(), bytes.size());
    EXPECT_EQ(bytes.find_first_not_of('x'), std::string::npos);
    if (!bytes.empty()) memory::AskForLargePages(bytes.data() + 1, bytes.size() - 1);
    EXPECT_EQ(bytes.find_first_not_of('x'), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(, LargeMemorySize, testing::ValuesIn(kSizes),
                         [](const auto& row) { return row.param.name; });

}  // namespace
