#include "cli/help_text.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sstream>
#include <string>

#include "cli/arguments.h"
#include "export/formats.h"

namespace {

using testing::HasSubstr;

class Help : public testing::TestWithParam<const std::string*> {
  protected:
    const std::string& Text() const { return *GetParam(); }
};

TEST_P(Help, FitsAScreen) {
    std::istringstream lines(Text());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        EXPECT_LE(line.size(), 79u) << line;
    // Some lists are longer than a screen.
    const bool isList = GetParam() == &cli::kImportAllHelp || GetParam() == &cli::kCommandHelp;
    EXPECT_LE(count, isList ? 60 : 30);
}

TEST_P(Help, ShowsAnExample) {
    EXPECT_THAT(Text(), HasSubstr("Example:"));
}

INSTANTIATE_TEST_SUITE_P(, Help,
                         testing::Values(&cli::kMainHelp, &cli::kImportHelp, &cli::kImportAllHelp,
                                         &cli::kViewHelp, &cli::kCheckHelp, &cli::kConvertHelp,
                                         &cli::kCommandHelp),
                         [](const auto& row) {
                             return row.param == &cli::kMainHelp        ? "Main"
                                    : row.param == &cli::kImportHelp    ? "Import"
                                    : row.param == &cli::kImportAllHelp ? "ImportAll"
                                    : row.param == &cli::kViewHelp      ? "View"
                                    : row.param == &cli::kCheckHelp     ? "Check"
                                    : row.param == &cli::kConvertHelp   ? "Convert"
                                                                        : "Command";
                         });

std::string AnswerTo(std::vector<const char*> words) {
    return std::get<cli::Answer>(cli::ParseArguments(words)).text;
}

TEST(HelpOption, PrintsTheHelpOfItsCommand) {
    EXPECT_EQ(AnswerTo({"--help"}), cli::kMainHelp);
    EXPECT_EQ(AnswerTo({"-h"}), cli::kMainHelp);
    EXPECT_EQ(AnswerTo({"import", "--help"}), cli::kImportHelp);
    EXPECT_EQ(AnswerTo({"import", "walk.bvh", "-h"}), cli::kImportHelp);
    EXPECT_EQ(AnswerTo({"import", "--help-all"}), cli::kImportAllHelp);
    EXPECT_EQ(AnswerTo({"--help-all"}), cli::kMainHelp);
    EXPECT_EQ(AnswerTo({"convert", "--help-all"}), cli::kConvertHelp);
    EXPECT_EQ(AnswerTo({}), cli::kMainHelp);
    EXPECT_EQ(AnswerTo({"view", "--help"}), cli::kViewHelp);
    EXPECT_EQ(AnswerTo({"check", "--help"}), cli::kCheckHelp);
    EXPECT_EQ(AnswerTo({"convert", "--help"}), cli::kConvertHelp);
    EXPECT_EQ(AnswerTo({"command", "--help"}), cli::kCommandHelp);
}

// Both lists are made from the table of formats.
TEST(HelpOption, NamesEveryOutput) {
    for (const exporters::Format& format : exporters::Formats()) {
        const std::string name(format.extension.substr(1));
        EXPECT_THAT(cli::kImportHelp, HasSubstr("." + name)) << name;
        EXPECT_THAT(cli::kConvertHelp, HasSubstr(name)) << name;
    }
    EXPECT_THAT(cli::kImportHelp, HasSubstr(".glb .gltf .fbx .bvh .csv .npz .html .svg .json\n"));
    EXPECT_THAT(cli::kImportAllHelp,
                HasSubstr(".glb .gltf .fbx .bvh .csv .npz .html .svg .json\n"));
    EXPECT_THAT(cli::kConvertHelp, HasSubstr("glb, gltf, fbx, bvh, csv, npz, html, svg or json\n"));
}

// A new option must not be forgotten in the text.
TEST(HelpOption, NamesEveryOption) {
    for (const char* option : {"--nulls",
                               "--bones",
                               "--[no-]chain-from-parent",
                               "--effector-to-last-bone",
                               "--[no-]group",
                               "--clip",
                               "--limits",
                               "--length",
                               "--preset",
                               "--as-is",
                               "--strict",
                               "--encoding",
                               "--scale",
                               "--up",
                               "--fps",
                               "--resample",
                               "--[no-]mesh",
                               "--digits",
                               "--frames",
                               "--in-place",
                               "--all-nodes",
                               "--aim",
                               "--animations",
                               "--float32",
                               "--[no-]compress",
                               "--provenance",
                               "--no-clobber"}) {
        EXPECT_THAT(cli::kImportAllHelp, HasSubstr(option));
        EXPECT_THAT(cli::kConvertHelp, HasSubstr(option));
    }
}

TEST(HelpOption, ListsTheCommandsWithTheirArguments) {
    EXPECT_THAT(cli::kCommandHelp, HasSubstr("  \"Biovision Import function\"\n"
                                             "    str:  the .bvh file\n"
                                             "    bool: add a clip of the motion\n"));
    EXPECT_THAT(cli::kCommandHelp, HasSubstr("    real: the factor on lengths\n"));
}

TEST(VersionOption, NamesTheProgram) {
    EXPECT_THAT(AnswerTo({"--version"}),
                testing::MatchesRegex("zkhost [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

}  // namespace
