#include "survey/source_text.h"

#include <gtest/gtest.h>

namespace {

using survey::SourceText;

TEST(SourceText, IsThePlainFile) {
    const SourceText source("HIERARCHY\nROOT Hips");
    EXPECT_EQ(source.Text(), "HIERARCHY\nROOT Hips");
    EXPECT_FALSE(source.HadMark() || source.WasUtf16() || source.WasEncoded() ||
                 source.HasHighBytes() || source.HadTrailingControls());
}

TEST(SourceText, LeavesOutWhiteSpaceAndControlsAtTheEnd) {
    const SourceText white("1 2 \t\r\n\n");
    EXPECT_EQ(white.Text(), "1 2");
    EXPECT_FALSE(white.HadTrailingControls());
    const std::string bytes("1 2\n\x1A\0\0", 7);
    const SourceText controls(bytes);
    EXPECT_EQ(controls.Text(), "1 2");
    EXPECT_TRUE(controls.HadTrailingControls());
}

TEST(SourceText, LeavesOutTheMarkOfUtf8) {
    const SourceText source("\xEF\xBB\xBFHIERARCHY");
    EXPECT_EQ(source.Text(), "HIERARCHY");
    EXPECT_TRUE(source.HadMark());
}

struct Utf16Row {
    const char* name;
    std::string_view bytes;
};

using namespace std::string_view_literals;
const Utf16Row kUtf16[] = {
    {"LittleWithMark", "\xFF\xFEH\0\xE4\0\x3D\xD8\x00\xDE"sv},
    {"BigWithMark", "\xFE\xFF\0H\0\xE4\xD8\x3D\xDE\0"sv},
};

class Utf16Text : public testing::TestWithParam<Utf16Row> {};

TEST_P(Utf16Text, IsConverted) {
    const SourceText source(GetParam().bytes);
    EXPECT_EQ(source.Text(), "H\xC3\xA4\xF0\x9F\x98\x80");
    EXPECT_TRUE(source.WasUtf16());
    EXPECT_TRUE(source.HasHighBytes());
}

INSTANTIATE_TEST_SUITE_P(, Utf16Text, testing::ValuesIn(kUtf16),
                         [](const auto& row) { return row.param.name; });

TEST(SourceText, RecognisesUtf16ByItsZeros) {
    EXPECT_EQ(SourceText("H\0I\0E\0"sv).Text(), "HIE");
    EXPECT_EQ(SourceText("\0H\0I\0E"sv).Text(), "HIE");
    EXPECT_FALSE(SourceText("H"sv).WasUtf16());
}

TEST(SourceText, ConvertsFromTheNamedEncoding) {
    const SourceText source("Schl\xFCssel", "ISO-8859-1");
    EXPECT_EQ(source.Text(), "Schl\xC3\xBCssel");
    EXPECT_TRUE(source.WasEncoded());
    const SourceText unnamed("Schl\xFCssel");
    EXPECT_EQ(unnamed.Text(), "Schl\xFCssel");
    EXPECT_TRUE(unnamed.HasHighBytes());
    // A text that is UTF-8 is not converted, whatever encoding is named.
    EXPECT_EQ(SourceText("\xC3\xBC", "ISO-8859-1").Text(), "\xC3\xBC");
}

struct PositionRow {
    const char* name;
    std::string_view text;
    std::size_t index;
    std::size_t line;
    std::size_t column;
};

const PositionRow kPositions[] = {
    {"First", "abc", 0, 1, 1},
    {"SameLine", "abc", 2, 1, 3},
    {"End", "abc", 3, 1, 4},
    {"AfterLineFeed", "a\nbc", 3, 2, 2},
    {"AfterBoth", "a\r\nbc", 4, 2, 2},
    {"AfterCarriageReturn", "a\rbc", 3, 2, 2},
    {"BlankLines", "a\r\n\r\n\r\nb", 7, 4, 1},
    {"CharactersNotBytes", "\xC3\xA4\xC3\xA4x", 4, 1, 3},
    {"BytesWhereNotUtf8", "\xE4\xE4x", 2, 1, 3},
};

class SourcePosition : public testing::TestWithParam<PositionRow> {};

TEST_P(SourcePosition, CountsFromOne) {
    const SourceText source(GetParam().text);
    const auto position = source.PositionOf(source.Text().data() + GetParam().index);
    EXPECT_EQ(position.line, GetParam().line);
    EXPECT_EQ(position.column, GetParam().column);
}

INSTANTIATE_TEST_SUITE_P(, SourcePosition, testing::ValuesIn(kPositions),
                         [](const auto& row) { return row.param.name; });

}  // namespace
