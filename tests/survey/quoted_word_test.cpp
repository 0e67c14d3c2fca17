#include "survey/quoted_word.h"

#include <gtest/gtest.h>

#include "text/utf8.h"

namespace quoted_word_test {

struct Row {
    const char* name;
    std::string word;
    std::string quoted;
};

const Row kRows[] = {
    {"Plain", "abc", "\"abc\""},
    {"Empty", "", "\"\""},
    {"Utf8", "H\xC3\xBC", "\"H\xC3\xBC\""},
    {"OtherBytes", "H\xFC", "\"H\xC3\xBC\""},
    {"Controls", "a\x01\tb", "\"a  b\""},
    {"Long", std::string(50, 'a'), "\"" + std::string(40, 'a') + "...\""},
    {"CutBeforeACharacter", std::string(39, 'a') + "\xC3\xBC\xC3\xBC",
     "\"" + std::string(39, 'a') + "...\""},
};

class QuotedWord : public testing::TestWithParam<Row> {};

TEST_P(QuotedWord, IsUtf8) {
    const std::string quoted = survey::Quoted(GetParam().word);
    EXPECT_EQ(quoted, GetParam().quoted);
    EXPECT_TRUE(text::IsValidUtf8(quoted));
}

INSTANTIATE_TEST_SUITE_P(, QuotedWord, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace quoted_word_test
