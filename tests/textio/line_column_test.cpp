#include <cstdint>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include "tests/textio/loaded.h"

namespace {

using textio_test::Load;

struct LineColumn {
    std::uint32_t line;
    std::uint32_t column;
};

// Counts the line and the column from the start of the text.
LineColumn ExpectedAt(const std::string& text, std::size_t position) {
    LineColumn expected{0, 0};
    for (std::size_t i = 0; i < position; ++i) {
        ++expected.column;
        if (text[i] == '\n') expected = {expected.line + 1, 0};
    }
    return expected;
}

TEST(LineAndColumn, CountFromZero) {
    const auto reader = Load("ab cd\n ef");
    EXPECT_EQ(reader->GetCurrentLine(), 0u);
    EXPECT_EQ(reader->GetCurrentColumn(), 0u);
    reader->GetNextString();
    EXPECT_EQ(reader->GetCurrentLine(), 0u);
    EXPECT_EQ(reader->GetCurrentColumn(), 2u);
    reader->GetNextString();
    EXPECT_EQ(reader->GetCurrentColumn(), 5u);
    reader->GetNextString();
    EXPECT_EQ(reader->GetCurrentLine(), 1u);
    EXPECT_EQ(reader->GetCurrentColumn(), 3u);
}

TEST(LineAndColumn, AreCorrectAtEveryPositionInAnyOrder) {
    const std::string text = "\n\nROOT Hips\r\n{\n\n  OFFSET 0 0 0\n}\n\nend";
    std::mt19937 random(1);
    const auto reader = Load(text);
    for (int i = 0; i < 2000; ++i) {
        const auto position = static_cast<std::uint32_t>(random() % text.size());
        ASSERT_TRUE(reader->SetPosition(position));
        const LineColumn expected = ExpectedAt(text, position);
        // Each of the two can be asked without the other.
        if (random() % 3 != 0) {
            ASSERT_EQ(reader->GetCurrentLine(), expected.line) << position;
        }
        if (random() % 3 != 0) {
            ASSERT_EQ(reader->GetCurrentColumn(), expected.column) << position;
        }
    }
}

TEST(LineAndColumn, BelongToTheFileThatIsLoaded) {
    const support::TemporaryFolder dir;
    CStringFile reader;
    ASSERT_TRUE(reader.ReadFile(textio_test::Wide(dir.Write("a", "1\n2\n3\n4")).c_str()));
    while (reader.GetNextString() != nullptr) {
    }
    EXPECT_EQ(reader.GetCurrentLine(), 3u);
    EXPECT_EQ(reader.GetCurrentColumn(), 1u);
    ASSERT_TRUE(reader.ReadFile(textio_test::Wide(dir.Write("b", "one line of words")).c_str()));
    while (reader.GetNextString() != nullptr) {
    }
    EXPECT_EQ(reader.GetCurrentLine(), 0u);
    EXPECT_EQ(reader.GetCurrentColumn(), 17u);
}

// Counting from the start each time would take hours here.
TEST(LineAndColumn, CanBeAskedAtEveryTokenOfALongFile) {
    constexpr std::uint32_t kLines = 400'000;
    std::string text;
    for (std::uint32_t line = 0; line < kLines; ++line)
        text += "1.5 2\n";
    const auto reader = Load(text);
    for (std::uint32_t line = 0; line < kLines; ++line) {
        reader->GetNextString();
        ASSERT_EQ(reader->GetCurrentLine(), line);
        ASSERT_EQ(reader->GetCurrentColumn(), 3u);
        reader->GetNextString();
        ASSERT_EQ(reader->GetCurrentLine(), line);
        ASSERT_EQ(reader->GetCurrentColumn(), 5u);
    }
}

TEST(LineAndColumn, CanBeAskedAtEveryTokenOfALongLine) {
    constexpr std::uint32_t kTokens = 1'000'000;
    std::string text = "\n";
    for (std::uint32_t i = 0; i < kTokens; ++i)
        text += "1 ";
    const auto reader = Load(text);
    for (std::uint32_t i = 0; i < kTokens; ++i) {
        ASSERT_STREQ(reader->GetNextString(), "1");
        ASSERT_EQ(reader->GetCurrentLine(), 1u);
        ASSERT_EQ(reader->GetCurrentColumn(), 2 * i + 1);
    }
    EXPECT_EQ(reader->GetNextString(), nullptr);
}

TEST(NextLine, BeginsAfterTheNextLineFeed) {
    const auto reader = Load("# note\nword\n\nlast");
    EXPECT_TRUE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 7u);
    EXPECT_STREQ(reader->PeekNextString(), "word");
    EXPECT_TRUE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 12u);
    EXPECT_TRUE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 13u);
    EXPECT_FALSE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 13u);
}

TEST(NextLine, DoesNotExistAfterTheLastByte) {
    const auto reader = Load("ab\n");
    EXPECT_FALSE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 0u);
    reader->GetNextString();
    EXPECT_FALSE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 2u);
}

TEST(NextLine, BeginsAfterALineFeedAtThePosition) {
    const auto reader = Load("ab\ncd");
    reader->GetNextString();
    EXPECT_TRUE(reader->GotoNextLine());
    EXPECT_STREQ(reader->GetNextString(), "cd");
    EXPECT_FALSE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), reader->GetSize());
}

TEST(NextLine, IsNotFoundAfterANulByte) {
    const auto reader = Load(std::string("a \0b\ncd", 7));
    EXPECT_FALSE(reader->GotoNextLine());
    EXPECT_EQ(reader->GetPosition(), 0u);
}

TEST(NextLine, NeedsALineFeedNotACarriageReturn) {
    const auto reader = Load("ab\rcd");
    EXPECT_FALSE(reader->GotoNextLine());
}

}  // namespace
