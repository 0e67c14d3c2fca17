#include "text/utf8.h"

#include <gtest/gtest.h>

namespace {

struct CharacterRow {
    const char* name;
    char32_t character;
    const char* bytes;
};

const CharacterRow kCharacters[] = {
    {"Ascii", U'A', "A"},
    {"LastOfOneByte", 0x7F, "\x7F"},
    {"FirstOfTwoBytes", 0x80, "\xC2\x80"},
    {"LastOfTwoBytes", 0x7FF, "\xDF\xBF"},
    {"FirstOfThreeBytes", 0x800, "\xE0\xA0\x80"},
    {"LastOfThreeBytes", 0xFFFF, "\xEF\xBF\xBF"},
    {"FirstOfFourBytes", 0x10000, "\xF0\x90\x80\x80"},
    {"LastOfAll", 0x10FFFF, "\xF4\x8F\xBF\xBF"},
};

class Utf8Character : public testing::TestWithParam<CharacterRow> {};

TEST_P(Utf8Character, IsWrittenAndReadBack) {
    std::string written;
    text::AppendUtf8(written, GetParam().character);
    EXPECT_EQ(written, GetParam().bytes);
    EXPECT_EQ(text::DecodeCharacter(written + "x").length, written.size());
    EXPECT_TRUE(text::IsValidUtf8(written));
}

INSTANTIATE_TEST_SUITE_P(, Utf8Character, testing::ValuesIn(kCharacters),
                         [](const auto& row) { return row.param.name; });

TEST(Utf8, WritesTheReplacementForCodesThatAreNoCharacters) {
    for (const char32_t wrong : {0xD800U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
        std::string written;
        text::AppendUtf8(written, wrong);
        EXPECT_EQ(written, "\xEF\xBF\xBD");
    }
}

struct InvalidRow {
    const char* name;
    std::string_view bytes;
    std::size_t index;
};

const InvalidRow kInvalid[] = {
    {"ContinuationAlone", "abcdefgh\x80", 8}, {"CutAtTheEnd", "a\xE3\x81", 1},
    {"OverlongSlash", "\xC0\xAF", 0},         {"OverlongThreeBytes", "\xE0\x80\xAF", 0},
    {"Surrogate", "ab\xED\xA0\x80", 2},       {"BeyondTheLast", "\xF4\x90\x80\x80", 0},
    {"FiveBytes", "\xF8\x88\x80\x80\x80", 0}, {"Latin1", "Schl\xFCssel", 4},
    {"SecondByteWrong", "\xC3\x28", 0},
};

class InvalidUtf8 : public testing::TestWithParam<InvalidRow> {};

TEST_P(InvalidUtf8, IsFoundAtItsFirstByte) {
    EXPECT_EQ(text::FindInvalidUtf8(GetParam().bytes), GetParam().index);
}

INSTANTIATE_TEST_SUITE_P(, InvalidUtf8, testing::ValuesIn(kInvalid),
                         [](const auto& row) { return row.param.name; });

TEST(Utf8, ReplacesInvalidBytes) {
    EXPECT_EQ(text::ReplaceInvalidUtf8("H\xC3\xBC"), "H\xC3\xBC");
    EXPECT_EQ(text::ReplaceInvalidUtf8("\xFC\xE3\x81x\x80"),
              "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDx\xEF\xBF\xBD");
    EXPECT_EQ(text::ReplaceInvalidUtf8(""), "");
}

TEST(Utf8, IsShortenedInWholeCharacters) {
    EXPECT_EQ(text::Shortened("abcdef", 6), "abcdef");
    EXPECT_EQ(text::Shortened("abcdefg", 6), "abc\xE2\x80\xA6");
    EXPECT_EQ(text::Shortened("ab\xC3\xBC"
                              "defg",
                              6),
              "ab\xE2\x80\xA6");
}

}  // namespace
