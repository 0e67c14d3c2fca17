#include "app/help_text.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>
#include <string>

#include "app/arguments.h"

namespace {

using testing::HasSubstr;

class Help : public testing::TestWithParam<const std::string_view*> {
  protected:
    std::string Text() const { return std::string(*GetParam()); }
};

TEST_P(Help, FitsAScreen) {
    std::istringstream lines(Text());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_LE(line.size(), 80u) << line;
    // With the line of the next prompt.
    EXPECT_LE(count, 23);
}

TEST_P(Help, ShowsAnExample) {
    EXPECT_THAT(Text(), HasSubstr("Example:"));
}

INSTANTIATE_TEST_SUITE_P(, Help,
                         testing::Values(&app::kMainHelp, &app::kImportHelp, &app::kCheckHelp,
                                         &app::kConvertHelp, &app::kCommandHelp),
                         [](const auto& row) {
                             return row.param == &app::kMainHelp      ? "Main"
                                    : row.param == &app::kImportHelp  ? "Import"
                                    : row.param == &app::kCheckHelp   ? "Check"
                                    : row.param == &app::kConvertHelp ? "Convert"
                                                                      : "Command";
                         });

std::string AnswerTo(std::vector<const char*> words) {
    return std::get<app::Answer>(app::ParseArguments(words)).text;
}

TEST(HelpOption, AnswersForItsCommand) {
    EXPECT_EQ(AnswerTo({"--help"}), app::kMainHelp);
    EXPECT_EQ(AnswerTo({"-h"}), app::kMainHelp);
    EXPECT_EQ(AnswerTo({"import", "--help"}), app::kImportHelp);
    EXPECT_EQ(AnswerTo({"import", "walk.bvh", "-h"}), app::kImportHelp);
    EXPECT_EQ(AnswerTo({"check", "--help"}), app::kCheckHelp);
    EXPECT_EQ(AnswerTo({"convert", "--help"}), app::kConvertHelp);
    EXPECT_EQ(AnswerTo({"command", "--help"}), app::kCommandHelp);
}

TEST(VersionOption, NamesTheProgram) {
    EXPECT_THAT(AnswerTo({"--version"}),
                testing::MatchesRegex("zkhost [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
