// Surveys captured pairs, which other programs wrote.
#include <filesystem>
#include <gtest/gtest.h>

#include "survey/codes.h"
#include "tests/support/files.h"
#include "tests/survey/acclaim_case.h"

namespace {

using acclaim_case::ExpectFindings;
using survey::Severity;

struct Row {
    const char* name;
    const char* asf;
    const char* amc;
    std::size_t unitLine;
    std::size_t frames;
};

const Row kRows[] = {
    {"S08", "08.asf", "08_04.amc", 7, 484},
    {"S11", "11.asf", "11_01.amc", 8, 597},
    {"S135", "135-martialArts.asf", "135_06-martialArts.amc", 7, 3261},
    {"S14", "14.asf", "14.amc", 7, 22},
    {"Zeros", "08.asf", "zeros.amc", 7, 7},
};

class AcclaimData : public testing::TestWithParam<Row> {};

TEST_P(AcclaimData, NeedsNoMendingAndHasAPersonsSize) {
    if (!support::CaptureFolder()) GTEST_SKIP() << support::kNoCaptures;
    const std::filesystem::path folder = *support::CaptureFolder() / "acclaim";
    const std::string asf = support::ReadText(folder / GetParam().asf);
    const std::string amc = support::ReadText(folder / GetParam().amc);
    const survey::AcclaimFile motion = {amc, GetParam().amc};
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    auto found = survey::SurveyAcclaim({asf, GetParam().asf}, {&motion, 1}, options);
    ExpectFindings(found.skeleton.findings,
                   {{survey::codes::kPresetCmu, Severity::Note, GetParam().unitLine}});
    ExpectFindings(found.motions[0].findings, {});
    EXPECT_FALSE(found.skeleton.mended);
    EXPECT_FALSE(found.motions[0].mended);
    EXPECT_EQ(found.lengthMultiplier, 0.056444);
    EXPECT_EQ(found.multiplied, 1.0);
    EXPECT_EQ(found.motions[0].framesPerSecond, 120.0);
    EXPECT_EQ(found.motions[0].facts.frames, GetParam().frames);

    options.purpose = survey::Purpose::Check;
    found = survey::SurveyAcclaim({asf, GetParam().asf}, {&motion, 1}, options);
    EXPECT_EQ(found.skeleton.facts.unit, "metres");
    EXPECT_NEAR(found.skeleton.facts.height.value_or(0.0), 1.6, 0.15);
    EXPECT_EQ(found.skeleton.facts.joints, 31U);
    EXPECT_EQ(found.skeleton.facts.channels, 62U);
}

INSTANTIATE_TEST_SUITE_P(, AcclaimData, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace
