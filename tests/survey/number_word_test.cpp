#include "survey/number_word.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace number_word_test {

using survey::WordKind;

struct Row {
    const char* word;
    WordKind kind;
    double value = 0.0;
};

const Row kRows[] = {
    {"0", WordKind::Number, 0.0},
    {"-0.0", WordKind::Number, -0.0},
    {".0", WordKind::Number, 0.0},
    {"+0", WordKind::Number, 0.0},
    {"12", WordKind::Number, 12.0},
    {"-12.5", WordKind::Number, -12.5},
    {"+12.5", WordKind::Number, 12.5},
    {"5.", WordKind::Number, 5.0},
    {"-.5", WordKind::Number, -0.5},
    {"4.26811e-015", WordKind::Number, 4.26811e-015},
    {"1E3", WordKind::Number, 1000.0},
    {"1e-400", WordKind::Number, 0.0},
    {"123456789012345678901234567890", WordKind::Number, 123456789012345678901234567890.0},
    {"1,5", WordKind::Comma, 1.5},
    {"-,5", WordKind::Comma, -0.5},
    {"1,", WordKind::Comma, 1.0},
    {"1,2.5", WordKind::Other},
    {"1,2,3", WordKind::Other},
    {"0.0-7.5", WordKind::Glued},
    {"1-2-3", WordKind::Glued},
    {"1e5-2", WordKind::Glued},
    {"1+2", WordKind::Glued},
    {"1.2.3", WordKind::Other},
    {"1-", WordKind::Other},
    {"nan", WordKind::NotFinite},
    {"-NaN(ind)", WordKind::NotFinite},
    {"inf", WordKind::NotFinite},
    {"-Infinity", WordKind::NotFinite},
    {"-1.#IND", WordKind::NotFinite},
    {"1.#QNAN0", WordKind::NotFinite},
    {"1e999", WordKind::NotFinite},
    {"-1e999", WordKind::NotFinite},
    {"1,0e999", WordKind::NotFinite},
    {"", WordKind::Other},
    {"-", WordKind::Other},
    {".", WordKind::Other},
    {"e5", WordKind::Other},
    {"1e", WordKind::Other},
    {"1e+", WordKind::Other},
    {"12abc", WordKind::Other},
    {"0x10", WordKind::Other},
    {"information", WordKind::Other},
};

class NumberWord : public testing::TestWithParam<Row> {};

TEST_P(NumberWord, IsClassified) {
    double value = 99.0;
    const Row& row = GetParam();
    ASSERT_EQ(survey::ClassifyWord(row.word, value), row.kind) << row.word;
    const bool hasValue = row.kind == WordKind::Number || row.kind == WordKind::Comma;
    EXPECT_EQ(value, hasValue ? row.value : 99.0);
}

INSTANTIATE_TEST_SUITE_P(, NumberWord, testing::ValuesIn(kRows));

// Characters after the word in the same text must not be read.
TEST(NumberWords, EndWhereTheViewEnds) {
    const std::string text = "12.5 34";
    double value = 0.0;
    EXPECT_EQ(survey::ClassifyWord(std::string_view(text).substr(0, 4), value), WordKind::Number);
    EXPECT_EQ(value, 12.5);
}

TEST(NumberWords, AreSplitAtTheirSigns) {
    EXPECT_THAT(survey::SplitGlued("0.0-7.5+1e-2"), testing::ElementsAre("0.0", "-7.5", "+1e-2"));
    EXPECT_THAT(survey::SplitGlued("-1-2"), testing::ElementsAre("-1", "-2"));
}

TEST(NumberWords, ArePlainUnlessTheyAreAnOddZero) {
    for (const char* word : {"0", "-0", "0.0", "-0.0"})
        EXPECT_TRUE(survey::IsPlainWord(word, 0.0)) << word;
    for (const char* word : {".0", "-.0", "+0"})
        EXPECT_FALSE(survey::IsPlainWord(word, 0.0)) << word;
    EXPECT_TRUE(survey::IsPlainWord("+1", 1.0));
}

}  // namespace number_word_test
