#include "survey/bvh_plain_rows.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "survey/finding_list.h"
#include "survey/row_scan.h"
#include "survey/source_text.h"

namespace bvh_plain_rows_test {

constexpr std::size_t kChannels = 3;

// Finds the rows and reads them in pieces of several sizes, which must give the same values.
void ExpectSameInPieces(const survey::BvhSection& section, std::string_view text,
                        const survey::BvhFrames& expected) {
    survey::BvhFrames found;
    ASSERT_TRUE(survey::FindPlainRows(section, text, expected.Count(), 1, found));
    EXPECT_FALSE(found.IsRead());
    const survey::PlainRowValues values(found, text);
    for (const std::size_t count : {1, 2, 64}) {
        for (std::size_t first = 0; first < found.Count(); first += count) {
            const std::size_t rows = std::min(count, found.Count() - first);
            std::vector<double> piece(rows * found.channels);
            values.Read(first, rows, piece.data());
            ASSERT_EQ(
                std::memcmp(piece.data(), expected.Frame(first), piece.size() * sizeof(double)), 0)
                << first << ' ' << rows;
        }
    }
}

// Reads the rows in both ways. Returns whether ReadPlainRows can read them; if so, compares.
bool ReadsAsReadRows(const std::string& rows, std::size_t threads, std::size_t partBytes) {
    const survey::SourceText source(rows);
    const std::string_view text = source.Text();
    survey::BvhSection section;
    section.channels = kChannels;
    section.motion.present = true;
    section.motion.rows = {text.data(), 7};
    const survey::RowScan scan = survey::ScanRows(text, kChannels);
    EXPECT_TRUE(scan.plain) << rows;
    survey::BvhFrames found;
    if (!survey::ReadPlainRows(section, text, scan.rows, threads, found, partBytes)) return false;

    survey::FindingList findings(source);
    survey::BvhFrames expected;
    EXPECT_TRUE(survey::ReadRows(section, text, findings, expected));
    EXPECT_TRUE(findings.Sorted().empty());
    EXPECT_EQ(found.channels, expected.channels);
    EXPECT_EQ(found.hasOddWhite, expected.hasOddWhite);
    EXPECT_EQ(found.end.at, expected.end.at);
    EXPECT_EQ(found.end.line, expected.end.line);
    EXPECT_EQ(found.Count(), expected.Count());
    EXPECT_EQ(found.values.size(), expected.values.size());
    if (testing::Test::HasFailure()) return true;
    for (std::size_t i = 0; i < found.Count(); ++i) {
        EXPECT_EQ(found.rows[i].at, expected.rows[i].at) << i;
        EXPECT_EQ(found.rows[i].line, expected.rows[i].line) << i;
        EXPECT_EQ(found.rows[i].isPlain, expected.rows[i].isPlain) << i;
        EXPECT_EQ(found.rows[i].isSplit, expected.rows[i].isSplit) << i;
    }
    // The bits are compared, because 0 and -0 are equal.
    EXPECT_EQ(std::memcmp(found.values.data(), expected.values.data(),
                          found.values.size() * sizeof(double)),
              0)
        << rows;
    ExpectSameInPieces(section, text, expected);
    return true;
}

struct Case {
    const char* name;
    std::string text;
    bool isRead = true;
};

const Case kCases[] = {
    {"OneRow", "1 -2.5 .5"},
    {"Rows", "1 2 3\n-0 5 6e2\n7 8.25 -9\n"},
    {"BlanksAround", "1 2 3 \n \t4\t5  6\t\n7 8 9  "},
    {"LineEndsOfBothKinds", "1 2 3\r\n4 5 6\n7 8 9\r\n"},
    {"BlankLinesAtTheEnd", "1 2 3\n4 5 6\n\n \n\r\n"},
    {"ControlZAtTheEnd", "1 2 3\n4 5 6\n\x1A"},
    {"LongNumbers", "0.12345678901234567890 1e-300 +5\n100000000000000000000 -0.0 0\n"},
    {"NumberOf600Characters", "1 2 3\n4 5." + std::string(600, '0') + "1 6\n7 8 9\n"},
    {"BlankLineBetween", "1 2 3\n\n4 5 6\n", false},
    {"BlankLineOfBlanks", "1 2 3\n \t\n4 5 6\n", false},
    {"CarriageReturnAlone", "1 2 3\r4 5 6\n7 8 9\n", false},
    {"TwoCarriageReturns", "1 2 3\r\r\n4 5 6\n7 8 9\n", false},
    {"CarriageReturnsOnly", "1 2 3\r4 5 6\r7 8 9", false},
};

class PlainRows : public testing::TestWithParam<Case> {};

TEST_P(PlainRows, AreReadAsByReadRows) {
    for (const std::size_t threads : {1, 2, 5})
        for (std::size_t bytes = 1; bytes <= GetParam().text.size(); ++bytes)
            ASSERT_EQ(ReadsAsReadRows(GetParam().text, threads, bytes), GetParam().isRead)
                << threads << ' ' << bytes;
}

INSTANTIATE_TEST_SUITE_P(, PlainRows, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

TEST(PlainRowsRandom, AreReadAsByReadRows) {
    std::mt19937 random(3);
    const auto number = [&] {
        std::string text = random() % 2 == 0 ? "-" : "";
        text += std::to_string(random() % 1000);
        if (random() % 4 != 0) text += '.' + std::to_string(random());
        if (random() % 30 == 0) text += "e-" + std::to_string(random() % 20);
        return text;
    };
    for (int round = 0; round < 40; ++round) {
        std::string text;
        for (std::size_t row = 1 + random() % 300; row > 0; --row)
            text +=
                number() + ' ' + number() + '\t' + number() + (random() % 9 == 0 ? " \r\n" : "\n");
        for (const std::size_t threads : {1, 2, 5})
            for (const std::size_t bytes : {1, 100, 1000, 100'000})
                ASSERT_TRUE(ReadsAsReadRows(text, threads, bytes)) << threads << ' ' << bytes;
    }
}

}  // namespace bvh_plain_rows_test
