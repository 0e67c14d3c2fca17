// Findings and mended texts of AMC files, one row for each case.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "survey/codes.h"
#include "tests/survey/acclaim_case.h"

namespace amc_findings_test {

using namespace acclaim_case;
using namespace survey::codes;
using survey::Severity;
using testing::HasSubstr;

constexpr auto kNote = Severity::Note;
constexpr auto kWarning = Severity::Warning;
constexpr auto kError = Severity::Error;

struct Row {
    const char* name;
    const char* old;  // in the clean motion; null if `replacement` is the whole motion
    const char* replacement;
    std::vector<Told> told;
    // Part of the mended text; null if there must be none.
    const char* mended = nullptr;
};

// Each frame of the clean motion has four lines, so frame n begins in line 4 * n.
const Row kRows[] = {
    {"RateMissing", ":SAMPLES-PER-SECOND 60\n", "", {{kRateMissing, kWarning}}},
    {"RateOfNothing", "60\n:F", "0\n:F", {{kRateMissing, kWarning}}},
    {"RateWord",
     "60\n:F",
     "fast\n:F",
     {{kRateMissing, kWarning}},
     ":FULLY-SPECIFIED\n:DEGREES\n1\n"},
    {"RateLate",
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n",
     ":FULLY-SPECIFIED\n:SAMPLES-PER-SECOND 60\n",
     {{kRateText, kNote, 2, true}},
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n"},
    {"RateOnTheLine",
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n",
     ":FULLY-SPECIFIED :SAMPLES-PER-SECOND 60\n",
     {{kRateText, kNote, 1, true}},
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n"},
    {"RateFraction", "60\n:F", "59.94\n:F", {{kRateText, kNote, 1}}},
    {"RateWithPoint", "60\n:F", "60.0\n:F", {}},
    {"RowOrder",
     "root 1.3 90 -3.5 10 20 3\nspine 3 15 -20\n",
     "spine 3 15 -20\nroot 1.3 90 -3.5 10 20 3\n",
     {{kRowOrder, kNote, 14, true, 1, "root"}},
     "\n3\nroot 1.3 90 -3.5 10 20 3\nspine 3 15 -20\n"},
    {"BoneUnknown",
     "larm 4.3\n",
     "larm 4.3\ntail 1 2\nTail 3 4\nhorn\n",
     {{kBoneUnknown, kWarning, 16, true, 3, "tail"}},
     "larm 4.3\n4\n"},
    {"BoneWithoutDof",
     "larm 4.3\n",
     "larm 4.3\nrarm 0 0\n",
     {{kBoneWithoutDof, kNote, 16, true, 1, "rarm"}},
     "larm 4.3\n4\n"},
    {"BoneWithoutDofLost",
     "larm 4.3\n",
     "larm 4.3\nrarm 0 1\n",
     {{kBoneWithoutDof, kWarning, 16, true, 1, "rarm"}},
     "larm 4.3\n4\n"},
    {"BoneWithoutDofNorValues",
     "larm 4.3\n",
     "larm 4.3\nrarm\n",
     {{kBoneWithoutDof, kNote, 16, true, 1, "rarm"}},
     "larm 4.3\n4\n"},
    {"ForcedDofs",
     ":DEGREES\n",
     ":DEGREES\n:FORCE-ALL-JOINTS-BE-3DOF\n",
     {{kBoneWithoutDof, kNote, 4, true}},
     ":FULLY-SPECIFIED\n:DEGREES\n1\n"},
    {"BoneMissing",
     "spine 3 15 -20\n",
     "",
     {{kBoneMissing, kWarning, 12, true, 1, "spine"}},
     "\n3\nroot 1.3 90 -3.5 10 20 3\nspine 2 15 -20\nlarm 4.3\n"},
    {"BoneMissingInFirst", "spine 1 15 -20\n", "", {{kPairMismatch, kError, 4}}},
    {"ValuesFewer",
     "spine 3 15 -20",
     "spine 3 15",
     {{kValuesFewer, kWarning, 14, true, 1, "spine"}},
     "spine 2 15 -20\nlarm 4.3\n"},
    {"ValuesFewerInFirst",
     "spine 1 15 -20",
     "spine 1 15",
     {{kValuesFewer, kWarning, 6, true, 1, "spine"}},
     "\n1\nroot 1.1 90 -3.5 10 20 1\nspine 2 15 -20\n"},
    {"ValuesMore",
     "spine 3 15 -20",
     "spine 3 15 -20 7",
     {{kValuesMore, kWarning, 14, true, 1, "spine"}},
     "spine 2 15 -20\nlarm 4.3\n"},
    {"RowTwice",
     "larm 4.3\n",
     "larm 4.3\nspine 9 9 9\n",
     {{kRowOrder, kNote, 16, true, 1, "spine"}, {kValuesMore, kWarning, 16, true, 1, "spine"}},
     "spine 3 15 -20\nlarm 4.3\n4\n"},
    {"FrameCutRows",
     "spine 12 15 -20\nlarm 4.12\n",
     "",
     {{kFrameCut, kWarning, 48, true, 1, "spine"}},
     "larm 4.11\n"},
    {"FrameCutValues",
     "larm 4.12\n",
     "larm\n",
     {{kFrameCut, kWarning, 48, true, 1, "larm"}},
     "larm 4.11\n"},
    {"FrameCutNumberAlone",
     "12\nroot 1.12 90 -3.5 10 20 12\nspine 12 15 -20\nlarm 4.12\n",
     "12\n",
     {{kFrameCut, kWarning, 48, true, 1, "root"}},
     "larm 4.11\n"},
    {"NumberRepeats", "\n3\n", "\n2\n", {{kFrameNumber, kWarning, 12, true}}, "\n3\nroot 1.3 "},
    {"NumberFalls", "\n3\n", "\n1\n", {{kFrameNumber, kWarning, 12, true}}, "\n3\nroot 1.3 "},
    {"NumberMissing", "\n3\n", "\n", {{kFrameNumber, kWarning, 12, true}}, "\n3\nroot 1.3 "},
    {"NumberNegative", "\n1\n", "\n-1\n", {{kFrameNumber, kWarning, 4, true}}, "\n1\nroot 1.1 "},
    {"NumberAbsurd",
     "\n12\n",
     "\n99999999999\n",
     {{kFrameNumber, kWarning, 48, true}},
     "\n12\nroot 1.12 "},
    {"Gap", "\n12\n", "\n112\n", {{kFrameNumber, kNote, 48}}},
    {"LongGap", "\n12\n", "\n4000\n", {{kFrameNumber, kWarning, 48, true}}, "\n12\nroot 1.12 "},
    {"NumberWithPoint", "\n3\n", "\n3.0\n", {}, "\n3\nroot 1.3"},
    {"Glued",
     "spine 3 15 -20",
     "spine 3 15-20",
     {{kNumberGlued, kWarning, 14, true, 1, "spine"}},
     "spine 3 15 -20\n"},
    {"Comma",
     "spine 3 15 -20",
     "spine 3 1,5 -20",
     {{kNumberComma, kWarning, 14, true, 1, "spine"}},
     "spine 3 1.5 -20\n"},
    {"CommaMixed",
     "spine 3 15 -20",
     "spine 3 1,5 -2.0",
     {{kNumberComma, kError, 14, false, 1, "spine"}}},
    {"CommaWithoutCount",
     "spine 3 15 -20",
     "spine 3,5 1,5 -2,0 4",
     {{kNumberComma, kError, 14, false, 1, "spine"},
      {kValuesMore, kWarning, 14, true, 1, "spine"}}},
    {"CommaOfBothKinds",
     "3 15 -20\nlarm 4.3\n4\nroot 1.4 90 -3.5 10 20 4\nspine 4 15",
     "3,1 15,2 -20\nlarm 4.3\n4\nroot 1.4 90 -3.5 10 20 4\nspine 4,15",
     {{kNumberComma, kError, 18, false, 2}}},
    {"NotFinite",
     "spine 3 15 -20",
     "spine 3 -1.#IND -20",
     {{kNumberNotFinite, kWarning, 14, true, 1, "spine"}},
     "spine 3 15 -20\n"},
    {"NotFiniteFirst",
     "spine 1 15 -20",
     "spine nan 15 -20",
     {{kNumberNotFinite, kWarning, 6, true, 1, "spine"}},
     "spine 2 15 -20\nlarm 4.1\n"},
    {"NotANumber",
     "spine 3 15 -20",
     "spine 3 x -20",
     {{kNumberNotFinite, kWarning, 14, true, 1, "spine"}},
     "spine 3 15 -20\n"},
    {"Overflow",
     "spine 3 15 -20",
     "spine 3 1e999 -20",
     {{kNumberNotFinite, kWarning, 14, true, 1, "spine"}},
     "spine 3 15 -20\n"},
    {"AngleUnits",
     ":DEGREES",
     ":RADIANS",
     {{kAngleUnits, kNote, 3, true}},
     ":DEGREES\n1\nroot 1.1 90 -3.5 572.957795130823 "},
    {"KeywordInHeader",
     ":DEGREES",
     ":NOISE 3\n:DEGREES",
     {{kKeywordUnknown, kNote, 3, true}},
     ":FULLY-SPECIFIED\n:DEGREES\n1\n"},
    {"KeywordInFrames",
     "\n3\n",
     "\n:MARK\n3\n",
     {{kKeywordUnknown, kNote, 12, true}},
     "larm 4.2\n3\nroot"},
    {"HeaderMissing",
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n",
     "",
     {{kRateMissing, kWarning}},
     ":FULLY-SPECIFIED\n:DEGREES\n1\nroot"},
    {"CommentBetweenFrames", "\n3\n", "\n# three\n3\n", {}, "larm 4.2\n3\nroot"},
    {"CommentBeforeFrames", "\n1\n", "\n# one\n1\n", {}, ":DEGREES\n1\nroot"},
    {"CommentAfterRow", "spine 3 15 -20", "spine 3 15 -20 # three", {}, "spine 3 15 -20\n"},
    {"OddZero", "spine 3 15 -20", "spine 3 .0 +0", {}, "spine 3 0 0\n"},
    {"FormFeed", "spine 3 15 -20", "spine 3 15\f-20", {}, "spine 3 15 -20\n"},
    {"TrailingControl", "larm 4.12\n", "larm 4.12\n\x1A", {}, "larm 4.12\n"},
    {"NoFrames",
     nullptr,
     ":FULLY-SPECIFIED\n:DEGREES\n",
     {{kMotionEmpty, kNote}, {kRateMissing, kWarning}}},
    {"NoFramesNorUnit",
     nullptr,
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n",
     {{kMotionEmpty, kNote}},
     ":FULLY-SPECIFIED\n:DEGREES\n"},
    {"RowsBeforeNumber", "\n1\n", "\n", {{kNotAmc, kError, 4}}},
    {"NotAmc", nullptr, "HIERARCHY\nROOT Hips\n", {{kNotAmc, kError}}},
    {"Numbers", nullptr, "1 2 3\n4 5 6\n", {{kNotAmc, kError}}},
    {"Skeleton", nullptr, ":version 1.10\n:bonedata\nbegin", {{kNotAmc, kError}}},
    {"Empty", nullptr, "\r\n", {{kEmpty, kError}}},
    {"Mark",
     ":SAMPLES",
     "\xEF\xBB\xBF:SAMPLES",
     {{kByteOrderMark, kNote, 1, true}},
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n1\nroot"},
};

class AmcFinding : public testing::TestWithParam<Row> {};

TEST_P(AmcFinding, IsReportedAndMended) {
    const Row& row = GetParam();
    const std::string amc =
        row.old ? With(CleanAmc(), row.old, row.replacement) : std::string(row.replacement);
    const survey::Purpose purpose = row.mended ? PurposeThatWrites(row.told) : survey::Purpose::Fix;
    const auto found = Survey(CleanAsf(), amc, For(purpose));
    if (purpose == survey::Purpose::Import) {
        EXPECT_FALSE(Survey(CleanAsf(), amc, For(survey::Purpose::Fix)).motions[0].mended);
    }
    ExpectFindings(found.skeleton.findings, {});
    EXPECT_FALSE(found.skeleton.mended);
    const survey::AmcSurvey& motion = found.motions[0];
    ExpectFindings(motion.findings, row.told);
    ASSERT_EQ(motion.mended != nullptr, row.mended != nullptr)
        << (row.mended ? "" : motion.mended->Text());
    if (!row.mended) return;
    EXPECT_THAT(motion.mended->Text(), HasSubstr(row.mended));
    const auto again = Survey(CleanAsf(), motion.mended->Text(), For(purpose));
    EXPECT_FALSE(again.motions[0].mended) << again.motions[0].mended->Text();
    for (const auto& finding : again.motions[0].findings)
        EXPECT_FALSE(finding.mended) << finding.code;
}

INSTANTIATE_TEST_SUITE_P(, AmcFinding, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace amc_findings_test
