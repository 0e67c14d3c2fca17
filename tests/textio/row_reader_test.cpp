#include "textio/row_reader.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>
#include <iterator>
#include <ostream>
#include <random>
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

// Rows that ReadRow reads by masks, and rows that are nearly so.
TEST(RowReaderRandom, ReadsRowsAsByDigits) {
    std::mt19937_64 random(5);
    const auto below = [&](std::uint64_t n) { return random() % n; };
    const auto digits = [&](std::uint64_t most) {
        std::string text;
        for (std::uint64_t count = below(most + 1); count > 0; --count)
            text += static_cast<char>('0' + below(10));
        return text;
    };
    static const std::string kOdd[] = {"",    "-",   "+1",  "1e5", "1.2.3",
                                       "0x1", "nan", "1,5", "--1", "1-"};
    std::size_t accepted = 0;
    for (int i = 0; i < 60'000; ++i) {
        std::string text;
        const std::size_t width = 1 + below(12);
        const std::uint64_t decimals = below(2) == 0 ? 8 : 18;
        for (std::size_t column = 0; column < width; ++column) {
            text += std::string(below(8) == 0 ? below(4) : 1, below(9) == 0 ? '\t' : ' ');
            if (below(150) == 0) {
                text += kOdd[below(std::size(kOdd))];
                continue;
            }
            const bool isLong = below(60) == 0;
            text +=
                (below(2) == 0 ? "-" : "") + std::to_string(below(10)) + digits(isLong ? 10 : 3);
            if (below(6) != 0) text += '.' + digits(isLong ? 12 : decimals);
        }
        if (below(20) == 0) text += ' ';
        if (below(300) == 0) text[below(text.size())] = "\n\f\v.x:/\x80"[below(8)];
        text += below(10) == 0 ? "\r\n" : "\n";
        // Without the tail, the row is near the end of the text.
        if (below(10) != 0) text += std::string(120, ' ');
        double values[2][12] = {};
        double* columns[2][12];
        for (std::size_t way = 0; way < 2; ++way)
            for (std::size_t column = 0; column < 12; ++column)
                columns[way][column] = &values[way][column];
        const char* const last = text.data() + text.size();
        const char* const next = ReadRow(text.data(), last, {columns[0], width}, 0);
        const char* const expected =
            textio::ReadRowByDigits(text.data(), last, {columns[1], width}, 0);
        ASSERT_EQ(next, expected) << text;
        if (expected == nullptr) continue;
        ++accepted;
        for (std::size_t column = 0; column < width; ++column)
            ASSERT_EQ(Bits(values[0][column]), Bits(values[1][column])) << text;
    }
    EXPECT_GT(accepted, 30'000u);
    EXPECT_LT(accepted, 60'000u);
}

TEST(RowReaderStart, IsAfterAllSeparators) {
    EXPECT_EQ(*textio::SkipToRow(" \t\r\n x"), 'x');
    EXPECT_EQ(*textio::SkipToRow("y"), 'y');
    EXPECT_EQ(*textio::SkipToRow(" \n"), '\0');
    EXPECT_EQ(*textio::SkipToRow(" \f"), '\f');
}

}  // namespace
}  // namespace row_reader_test
