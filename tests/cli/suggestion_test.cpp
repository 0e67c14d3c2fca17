#include "cli/suggestion.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

struct Word {
    const char* word;
    const char* nearest;
};

std::ostream& operator<<(std::ostream& out, const Word& row) {
    return out << row.word;
}

class NearestWord : public testing::TestWithParam<Word> {};

TEST_P(NearestWord, IsFound) {
    EXPECT_EQ(cli::NearestWord(GetParam().word,
                               {"import", "check", "convert", "command", "glb", "gltf", "x", "on"}),
              GetParam().nearest);
}

const Word kWords[] = {
    {"improt", "import"},
    {"IMPORT", "import"},
    {"chekc", "check"},
    {"imports", "import"},
    {"impor", "import"},
    {"comand", "command"},
    {"covnertt", "convert"},
    {"gbl", "glb"},
    {"gltf2", "gltf"},
    {"no", "on"},
    {"export", ""},
    {"view", ""},
    {"y", ""},
    {"", ""},
    {"iiiiiimport", ""},
};
INSTANTIATE_TEST_SUITE_P(, NearestWord, testing::ValuesIn(kWords));

TEST(Suggestion, IsAQuestionOrEmpty) {
    EXPECT_EQ(cli::Suggestion("gbl", {"glb"}), "; did you mean 'glb'?");
    EXPECT_EQ(cli::Suggestion("wav", {"glb"}), "");
    EXPECT_EQ(cli::Suggestion(std::string(1'000'000, 'a'), {"glb"}), "");
}

TEST(ListOf, NamesAllWords) {
    EXPECT_EQ(cli::ListOf({}), "");
    EXPECT_EQ(cli::ListOf({"a"}), "a");
    EXPECT_EQ(cli::ListOf({"a", "b", "c"}), "a, b or c");
}

}  // namespace
