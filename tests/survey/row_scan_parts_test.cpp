#include "survey/row_scan_parts.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

#include "survey/high_bytes.h"
#include "survey/row_scan.h"

namespace row_scan_parts_test {

// Compares the scan in parts with the scan of the whole text, for parts of every size.
void ExpectSame(const std::string& text, std::size_t words) {
    const survey::RowScan whole = survey::ScanRows(text, words);
    for (const std::size_t threads : {1, 2, 5}) {
        for (std::size_t bytes = 1; bytes <= text.size() + 1; ++bytes) {
            const survey::RowScan scan = survey::ScanRowsInParts(text, words, threads, bytes);
            ASSERT_EQ(scan.plain, whole.plain) << text << '|' << threads << ' ' << bytes;
            ASSERT_EQ(scan.end, whole.end) << text << '|' << threads << ' ' << bytes;
            if (!whole.plain) continue;
            ASSERT_EQ(scan.rows, whole.rows) << text << '|' << threads << ' ' << bytes;
        }
    }
}

struct Case {
    const char* name;
    std::string text;
};

const Case kCases[] = {
    {"Nothing", ""},
    {"OneRow", "1 -2.5"},
    {"Rows", "1 2\n3 4\n5 6\n7 8\n9 10\n"},
    {"BlankLines", "\n\r\n 1 2\t\r\n\n\n\n3 4 \n\n"},
    {"CarriageReturns", "1 2\r3 4\r5 6"},
    {"BothLineEnds", "1 2\r\n3 4\r\n5 6\r\n"},
    {"ShortRow", "1 2\n3 4\n5\n6 7\n8 9\n"},
    {"LongRow", "1 2\n3 4\n5 6 7\n6 7\n8 9\n"},
    {"ShortLastRow", "1 2\n3 4\n5"},
    {"SplitRow", "1 2\n3\n4\n5 6\n"},
    {"Letters", "1 2\n3 4\n5 x\n6 7\n"},
    {"Minus", "1 2\n3 -\n4 5\n"},
    {"Points", "1 2\n3 1.2.3\n4 5\n"},
    {"HighByte", "1 2\n3 \xA0\n4 5\n"},
    {"Section", "1 2\n3 4\nHIERARCHY\nROOT\n1 2\n"},
    {"SectionAfterBlanks", "1 2\n3 4\n\n \tHIERARCHY\nROOT\n1 2\n"},
    {"SectionWithinALine", "1 2\n3 HIERARCHY\n4 5\n"},
    {"SectionAfterAnOddRow", "1 2\n3 x\nHIERARCHY\n4 5\n"},
    {"TwoSections", "1 2\nHIERARCHY\n3 4\nHIERARCHY\n5 6\n"},
};

class RowScanParts : public testing::TestWithParam<Case> {};

TEST_P(RowScanParts, GiveTheSameAsTheWholeText) {
    ExpectSame(GetParam().text, 2);
}

INSTANTIATE_TEST_SUITE_P(, RowScanParts, testing::ValuesIn(kCases),
                         [](const auto& row) { return row.param.name; });

TEST(RowScanPartsRandom, GiveTheSameAsTheWholeText) {
    std::mt19937 random(11);
    const std::vector<std::string> words = {"1", "-2.5", "1e-5", ".5", "100", "0.125"};
    const std::string odd = "-.,x\n\r HIERARCHY";
    for (int round = 0; round < 150; ++round) {
        std::string text;
        for (std::size_t line = random() % 12; line > 0; --line) {
            text += words[random() % words.size()] + ' ' + words[random() % words.size()];
            text += random() % 5 == 0 ? "\r\n" : "\n";
        }
        if (random() % 3 == 0 && !text.empty())
            text[random() % text.size()] = odd[random() % odd.size()];
        ExpectSame(text, 2);
    }
}

TEST(HighBytes, AreFoundInEveryPart) {
    const std::string plain(1'000'000, 'x');
    for (const std::size_t threads : {1, 2, 5}) {
        EXPECT_FALSE(survey::HasHighByteInParts(plain, threads));
        EXPECT_FALSE(survey::HasHighByteInParts("", threads));
        for (const std::size_t at : {0, 1, 63, 262'143, 262'144, 999'936, 999'999}) {
            std::string text = plain;
            text[at] = '\x80';
            EXPECT_TRUE(survey::HasHighByte(text)) << at;
            EXPECT_TRUE(survey::HasHighByteInParts(text, threads)) << at;
        }
    }
}

}  // namespace row_scan_parts_test
