// Which rate and length factor result from the options and from what the files state.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "survey/codes.h"
#include "tests/survey/acclaim_case.h"

namespace acclaim_settings_test {

using namespace acclaim_case;
using namespace survey::codes;
using survey::Preset;
using survey::Severity;
using testing::HasSubstr;

constexpr auto kNote = Severity::Note;
constexpr auto kWarning = Severity::Warning;

struct Row {
    const char* name;
    const char* length;  // the number in :units
    const char* rate;    // the line before :FULLY-SPECIFIED; may be empty
    Preset preset = Preset::Auto;
    std::optional<double> fps = {};
    std::optional<double> multiplier = {};
    std::vector<Told> skeleton = {};
    std::vector<Told> motion = {};
    std::optional<double> lengthMultiplier = {};
    std::optional<double> framesPerSecond = {};
    double factRate = 60.0;
};

const Row kRows[] = {
    {.name = "Plain", .length = "1.0", .rate = ":SAMPLES-PER-SECOND 60\n"},
    {.name = "Archive",
     .length = "0.45",
     .rate = "",
     .skeleton = {{kPresetCmu, kNote, 6}},
     .lengthMultiplier = 0.056444,
     .framesPerSecond = 120.0,
     .factRate = 120.0},
    {.name = "ArchiveWithRate",
     .length = "0.45",
     .rate = ":SAMPLES-PER-SECOND 60\n",
     .skeleton = {{kPresetCmu, kNote, 6}},
     .lengthMultiplier = 0.056444},
    {.name = "ArchiveWithFps",
     .length = "0.45",
     .rate = "",
     .fps = 24.0,
     .skeleton = {{kPresetCmu, kNote, 6}},
     .lengthMultiplier = 0.056444,
     .framesPerSecond = 24.0,
     .factRate = 24.0},
    {.name = "ArchiveWithLength",
     .length = "0.45",
     .rate = "",
     .multiplier = 2.0,
     .skeleton = {{kPresetCmu, kNote, 6}},
     .lengthMultiplier = 2.0,
     .framesPerSecond = 120.0,
     .factRate = 120.0},
    {.name = "ArchiveAsItIs",
     .length = "0.45",
     .rate = "",
     .preset = Preset::None,
     .skeleton = {{kLengthUnit, kNote, 6}},
     .motion = {{kRateMissing, kWarning}},
     .lengthMultiplier = 0.45,
     .factRate = 30.0},
    {.name = "PresetForAnyFile",
     .length = "1.0",
     .rate = "",
     .preset = Preset::Cmu,
     .lengthMultiplier = 0.056444,
     .framesPerSecond = 120.0,
     .factRate = 120.0},
    {.name = "LengthUnit",
     .length = "2.54",
     .rate = ":SAMPLES-PER-SECOND 60\n",
     .skeleton = {{kLengthUnit, kNote, 6}},
     .lengthMultiplier = 2.54},
    {.name = "LengthInItsStead",
     .length = "2.54",
     .rate = ":SAMPLES-PER-SECOND 60\n",
     .multiplier = 1.0,
     .lengthMultiplier = 1.0},
    {.name = "RateMissing",
     .length = "1.0",
     .rate = "",
     .motion = {{kRateMissing, kWarning}},
     .factRate = 30.0},
    {.name = "RateFromOutside",
     .length = "1.0",
     .rate = "",
     .fps = 50.0,
     .framesPerSecond = 50.0,
     .factRate = 50.0},
    {.name = "RateInItsStead",
     .length = "1.0",
     .rate = ":SAMPLES-PER-SECOND 60\n",
     .fps = 50.0,
     .framesPerSecond = 50.0,
     .factRate = 50.0},
    {.name = "RateOfOne",
     .length = "1.0",
     .rate = ":SAMPLES-PER-SECOND 1\n",
     .framesPerSecond = 1.0,
     .factRate = 1.0},
};

class AcclaimSettings : public testing::TestWithParam<Row> {};

TEST_P(AcclaimSettings, NeedNoMendedText) {
    const Row& row = GetParam();
    survey::Options options = For(survey::Purpose::Import);
    options.preset = row.preset;
    options.framesPerSecond = row.fps;
    options.lengthMultiplier = row.multiplier;
    const std::string asf = With(CleanAsf(), "length 1.0", std::string("length ") + row.length);
    const std::string amc = With(CleanAmc(), ":SAMPLES-PER-SECOND 60\n", row.rate);
    const auto found = Survey(asf, amc, options);
    ExpectFindings(found.skeleton.findings, row.skeleton);
    ExpectFindings(found.motions[0].findings, row.motion);
    EXPECT_FALSE(found.skeleton.mended);
    EXPECT_FALSE(found.motions[0].mended);
    EXPECT_EQ(found.lengthMultiplier, row.lengthMultiplier);
    EXPECT_EQ(found.multiplied, 1.0);
    EXPECT_EQ(found.motions[0].framesPerSecond, row.framesPerSecond);
    EXPECT_EQ(found.motions[0].facts.framesPerSecond, row.factRate);
    EXPECT_EQ(found.motions[0].facts.seconds, 12.0 / row.factRate);
}

INSTANTIATE_TEST_SUITE_P(, AcclaimSettings, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

TEST(AcclaimLengths, MultipliesWhatIsTooShort) {
    const std::string asf =
        With(With(CleanAsf(), "length 20", "length 0.0004"), "length 1.0", "length 0.5");
    const auto found = Survey(asf, CleanAmc(), For(survey::Purpose::Import));
    EXPECT_EQ(found.multiplied, 100.0);
    EXPECT_EQ(found.lengthMultiplier, 50.0);
    EXPECT_FALSE(found.skeleton.mended);
    EXPECT_FALSE(found.motions[0].mended);
}

TEST(AcclaimLengths, MultiplyTheRootAtRestToo) {
    const std::string asf =
        With(With(CleanAsf(), "position 0 0 0", "position 1 -2 0"), "length 1.0", "length 2.5");
    const auto found = Survey(asf, CleanAmc(), For(survey::Purpose::Import));
    ASSERT_TRUE(found.skeleton.mended);
    EXPECT_THAT(found.skeleton.mended->Text(), HasSubstr("position 2.5 -5 0\n"));
    EXPECT_FALSE(found.motions[0].mended);
    ExpectFindings(found.skeleton.findings, {{kLengthUnit, kNote, 6, true}});
    const auto fixed = Survey(asf, CleanAmc(), For(survey::Purpose::Fix));
    EXPECT_FALSE(fixed.skeleton.mended);
}

TEST(AcclaimRates, AreRoundedInTheTextForThePlugIn) {
    const std::string amc = With(CleanAmc(), "SECOND 60", "SECOND 59.94");
    const auto found = Survey(CleanAsf(), amc, For(survey::Purpose::Import));
    EXPECT_EQ(found.motions[0].framesPerSecond, 59.94);
    ASSERT_TRUE(found.motions[0].mended);
    EXPECT_THAT(found.motions[0].mended->Text(), testing::StartsWith(":SAMPLES-PER-SECOND 60\n"));
    ExpectFindings(found.motions[0].findings, {{kRateText, kNote, 1, true}});
    // The plug-in reads 120.3 as 120, which is the nearest whole rate, so no text is needed.
    const auto near = Survey(CleanAsf(), With(CleanAmc(), "SECOND 60", "SECOND 120.3"),
                             For(survey::Purpose::Import));
    EXPECT_FALSE(near.motions[0].mended);
    EXPECT_EQ(near.motions[0].framesPerSecond, 120.3);
}

}  // namespace acclaim_settings_test
