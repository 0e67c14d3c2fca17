#include "survey/row_scan.h"

#include <array>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "textio/number.h"

namespace row_scan_test {

using survey::ByteMasks;
using survey::ByteMasksKernel;
using namespace std::string_view_literals;

std::vector<ByteMasksKernel> Kernels() {
    std::vector<ByteMasksKernel> kernels = {survey::ByteMasksPlain};
#ifdef __SSE2__
    kernels.push_back(survey::ByteMasksSse2);
#endif
#ifdef ZKMOCAP_HAVE_AVX2_KERNEL
    if (__builtin_cpu_supports("avx2")) kernels.push_back(survey::ByteMasksAvx2);
#endif
    return kernels;
}

TEST(ByteMasks, AreTheSameFromEveryKernel) {
    std::string bytes(4 * survey::kMaskBlock, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i);
    std::array<ByteMasks, 4> plain;
    survey::ByteMasksPlain(bytes.data(), 4, plain.data());
    for (const ByteMasksKernel kernel : Kernels()) {
        std::array<ByteMasks, 4> masks;
        kernel(bytes.data(), 4, masks.data());
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_EQ(masks[i].digits, plain[i].digits);
            EXPECT_EQ(masks[i].points, plain[i].points);
            EXPECT_EQ(masks[i].minuses, plain[i].minuses);
            EXPECT_EQ(masks[i].lineEnds, plain[i].lineEnds);
            EXPECT_EQ(masks[i].white, plain[i].white);
        }
    }
}

struct Row {
    const char* name;
    std::string_view text;
    std::size_t words;
    bool plain;
    std::size_t rows = 0;
};

const Row kRows[] = {
    {"Nothing", "", 3, true, 0},
    {"OneRow", "1 -2.5 .5", 3, true, 1},
    {"BlankLines", "\n\r\n 1 2\t\r\n\n3 4 \n", 2, true, 2},
    {"CarriageReturns", "1 2\r3 4\r", 2, true, 2},
    {"Exponents", "1e5 -2.5E-007 0.0e+00", 3, true, 1},
    {"LargeExponent", "1e308", 1, true, 1},
    {"Overflow", "1e309", 1, false},
    {"Underflow", "1e-400", 1, false},
    {"TooFewWords", "1 2\n3\n", 2, false},
    {"TooManyWords", "1 2 3\n", 2, false},
    {"Plus", "+1.5 2", 2, true, 1},
    {"PlusZero", "+0 2", 2, false},
    {"PointZero", ".0 2", 2, false},
    {"MinusPointZero", "1 -.0", 2, false},
    {"MinusPoint", "1 -.5", 2, true, 1},
    {"MinusAlone", "1 -", 2, false},
    {"MinusAloneAtLineEnd", "1 -\n", 2, false},
    {"PointAlone", "1 .", 2, false},
    {"TwoPoints", "1 2.5.3", 2, false},
    {"AdjacentPoints", "1 2..3", 2, false},
    {"PointsApart", "1.5 2.5 3.", 3, true, 1},
    {"Glued", "1-2 3", 2, false},
    {"Comma", "1,5 3", 2, false},
    {"Nan", "nan 3", 2, false},
    {"Letters", "1a 3", 2, false},
    {"VerticalTab", "1\v3", 2, false},
    {"Nul", "1\0 3"sv, 2, false},
    {"HighByte", "1\xA0 3", 2, false},
    {"Section", "1 2\nHIERARCHY\nROOT", 2, true, 1},
    {"SectionWithinALine", "1 2\n3 HIERARCHY\n", 2, false},
};

class RowScan : public testing::TestWithParam<Row> {};

// Line feeds and a blank before the text shift it across the borders of blocks.
TEST_P(RowScan, RecognisesPlainRows) {
    for (const ByteMasksKernel kernel : Kernels()) {
        for (std::size_t shift = 0; shift < 2 * survey::kMaskBlock; ++shift) {
            std::string text;
            const std::size_t lines = shift / 2;
            for (std::size_t i = 0; i < lines; ++i)
                text += '\n';
            text += std::string(shift % 2, ' ');
            text += GetParam().text;
            const survey::RowScan scan = survey::ScanRows(text, GetParam().words, kernel);
            EXPECT_EQ(scan.plain, GetParam().plain) << shift;
            if (!scan.plain) continue;
            EXPECT_EQ(scan.rows, GetParam().rows) << shift;
            const std::size_t section = text.find("HIER");
            EXPECT_EQ(scan.end,
                      text.data() + (section == std::string::npos ? text.size() : section));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, RowScan, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(RowScanWords, MayBeLong) {
    const std::string digits(10'000, '1');
    EXPECT_FALSE(survey::ScanRows(digits, 1).plain);  // too large for a double
    EXPECT_TRUE(survey::ScanRows("0." + digits, 1).plain);
    EXPECT_TRUE(survey::ScanRows(std::string(300, '1'), 1).plain);
    EXPECT_FALSE(survey::ScanRows("0." + digits + "." + digits, 1).plain);
}

// A simple reference scan, word by word.
survey::RowScan ScanSlowly(const std::string& text, std::size_t words) {
    survey::RowScan scan;
    std::string lines = text;
    for (char& c : lines)
        if (c == '\r') c = '\n';
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        std::size_t count = 0;
        for (std::size_t at = 0; (at = line.find_first_not_of(" \t", at)) != std::string::npos;) {
            const std::size_t end = std::min(line.find_first_of(" \t", at), line.size());
            if (!survey::IsSurelyPlain(std::string(line.substr(at, end - at)))) return {};
            at = end;
            ++count;
        }
        if (count == 0) continue;
        if (count != words) return {};
        ++scan.rows;
    }
    scan.plain = true;
    return scan;
}

TEST(RowScanWords, AgreeWithTheReferenceOnRandomTexts) {
    std::mt19937 random(7);
    const std::vector<std::string> words = {"1",    "-2.5", "0.000001", "-0",  "12.",   "1e-5",
                                            "-1.5", "3",    ".5",       "100", "0.125", "1.5E+3"};
    const std::string odd = "-.,e+x\v";
    std::size_t plain = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text;
        const std::size_t count = 1 + random() % 4;
        for (std::size_t line = random() % 30; line > 0; --line) {
            for (std::size_t i = 0; i < count; ++i)
                text += words[random() % words.size()] + (random() % 4 == 0 ? "\t " : " ");
            text += random() % 5 == 0 ? "\r\n" : "\n";
        }
        if (random() % 2 == 0 && !text.empty())
            text[random() % text.size()] = odd[random() % odd.size()];
        const survey::RowScan slow = ScanSlowly(text, count);
        plain += slow.plain ? 1 : 0;
        for (const ByteMasksKernel kernel : Kernels()) {
            const survey::RowScan scan = survey::ScanRows(text, count, kernel);
            ASSERT_EQ(scan.plain, slow.plain) << text;
            if (slow.plain) {
                ASSERT_EQ(scan.rows, slow.rows) << text;
            }
        }
    }
    EXPECT_GT(plain, 5'000U);
    EXPECT_LT(plain, 15'000U);
}

}  // namespace row_scan_test
