#include "textio/row_reader.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/textio/random_texts.h"
#include "textio/string_file.h"

namespace row_reader_test {
namespace {

using textio::ReadRow;
using textio::RowTarget;

std::uint64_t Bits(double value) {
    return std::bit_cast<std::uint64_t>(value);
}

struct Row {
    const char* name;
    std::string text;
    bool accepted;
    std::ptrdiff_t next = 0;  // where the next line begins
};
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

// Each row should have three numbers.
const Row kRows[] = {
    {"Plain", "1 2 3\n4", true, 6},
    {"NoLineFeed", "1 2 3", true, 5},
    {"Blanks", " \t1\r\t2  3 \t\r\n", true, 13},
    {"BlanksAtTheEnd", "1 2 3  ", true, 7},
    {"Long", "-0.12345678901234567890 1e-300 0x1p4\n", true, 37},
    {"TooFew", "1 2\n3\n", false},
    {"TooMany", "1 2 3 4\n", false},
    {"BlankLine", "\n1 2 3\n", false},
    {"Empty", "", false},
    {"Word", "1 x 3\n", false},
    {"ZeroThatIsRefused", "1 .0 3\n", false},
    {"Nul", std::string("1 2\0 3\n", 7), false},
    {"NulAfterTheRow", std::string("1 2 3\0\n", 7), false},
    {"FormFeed", "1 2 3\f\n", true, 7},
    {"FormFeedAlone", "1 2 3 \f\n", false},
    {"Comma", "1 2,5 3\n", false},
    {"Parenthesis", "1 (2) 3\n", false},
    {"VeryLong", "1 2 " + std::string(3000, '3') + "\n", false},
};

class RowReader : public testing::TestWithParam<Row> {};

TEST_P(RowReader, AcceptsExactlyTheNumbersOfARow) {
    const std::string& text = GetParam().text;
    double a[2] = {}, b[2] = {}, c[2] = {};
    double* const columns[] = {a, b, c};
    const char* const next =
        ReadRow(text.data(), text.data() + text.size(), RowTarget{columns, 3}, 1);
    ASSERT_EQ(next != nullptr, GetParam().accepted);
    EXPECT_EQ(a[0], 0.0) << "another row";
    if (next == nullptr) return;
    EXPECT_EQ(next - text.data(), GetParam().next);
    CStringFile reader;
    ASSERT_TRUE(reader.ReadMemory(text));
    for (const double stored : {a[1], b[1], c[1]}) {
        double value = 0.0;
        ASSERT_TRUE(reader.GetNextFloat(value));
        EXPECT_EQ(Bits(stored), Bits(value));
    }
}

INSTANTIATE_TEST_SUITE_P(, RowReader, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RowReaderRandom, StoresWhatTheReaderReads) {
    textio_test::TextMaker maker;
    std::size_t accepted = 0;
    for (int i = 0; i < 60'000; ++i) {
        const std::string text = maker.Next();
        CStringFile reader;
        ASSERT_TRUE(reader.ReadMemory(text));
        double expected = 0.0;
        const bool isOneToken = text.find_first_of(",()") == std::string::npos;
        const bool accepts = reader.GetNextFloat(expected) && isOneToken;
        double value = 0.0;
        double* const column = &value;
        const char* const next =
            ReadRow(text.data(), text.data() + text.size(), RowTarget{&column, 1}, 0);
        ASSERT_EQ(next != nullptr, accepts) << text;
        if (!accepts) continue;
        ++accepted;
        ASSERT_EQ(Bits(value), Bits(expected)) << text;
    }
    EXPECT_GT(accepted, 30'000u);
}

TEST(RowReaderStart, IsAfterAllSeparators) {
    EXPECT_EQ(*textio::SkipToRow(" \t\r\n x"), 'x');
    EXPECT_EQ(*textio::SkipToRow("y"), 'y');
    EXPECT_EQ(*textio::SkipToRow(" \n"), '\0');
    EXPECT_EQ(*textio::SkipToRow(" \f"), '\f');
}

}  // namespace
}  // namespace row_reader_test
