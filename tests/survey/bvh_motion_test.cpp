// Findings and mended texts about the rows and the header of a motion.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "tests/survey/bvh_expectation.h"

namespace bvh_motion_test {

using namespace survey::codes;
using survey::Severity;
using survey_test::BvhRow;
constexpr Severity kNote = Severity::Note;
constexpr Severity kWarning = Severity::Warning;
constexpr Severity kError = Severity::Error;

// A hierarchy of ten lines with three channels.
const std::string kHead =
    "HIERARCHY\nROOT a\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\nEnd Site\n{\n"
    "OFFSET 0 1 0\n}\n}\n";

std::string Header(const std::string& frames, const std::string& time = "0.04") {
    return kHead + "MOTION\nFrames: " + frames + "\nFrame Time: " + time + "\n";
}

// Rows, which begin in line 14 if they follow Header.
std::string Rows(int count, const std::string& row = "1 2 3\n") {
    std::string rows;
    for (int i = 0; i < count; ++i)
        rows += row;
    return rows;
}

std::string Joined(const std::string& frames) {
    return "Frames: " + frames + "\nFrame Time: 0.04\n";
}

const BvhRow kRows[] = {
    {"Clean", Header("2") + "1 2 3\n-4 5.5 1e-3\n", {}, ""},
    {"CleanWithoutLastLineEnd", Header("1") + "1 2 3", {}, ""},
    {"CleanWithCarriageReturns", Header("2") + "1 2 3\r4 5 6\r", {}, ""},
    {"FrameTimeBeginsWithPoint", Header("1", ".0083333") + "1 2 3\n", {}, ""},
    {"PointZero", Header("1") + ".0 2 3\n", {}, Joined("1") + "0 2 3\n"},
    {"PlusZero", Header("1") + "1 +0 +3\n", {}, Joined("1") + "1 0 +3\n"},
    {"Underflow", Header("1") + "1 1e-400 3\n", {}, Joined("1") + "1 0 3\n"},
    {"VerticalTab", Header("1") + "1\v2\f3\n", {}, Joined("1") + "1 2 3\n"},
    {"ControlsAtTheEnd", Header("1") + "1 2 3\n\x1A", {}, Joined("1") + "1 2 3\n"},
    {"FormFeedAtTheEndOfAHierarchy",
     kHead + "\f",
     {{kMotionMissing, kNote, 1, 1, 1, false}},
     "\t}\n}\n"},
    {"OtherBytesInSurplusText",
     Header("1") + "1 2 3\nf\xFCr\n",
     {{kSurplusText, kWarning, 15, 1}, {kTextEncoding, kNote, 15, 2, 1, false}},
     Joined("1") + "1 2 3\n"},
    {"FramesWithDecimals", Header("1.0") + "1 2 3\n", {}, ""},

    {"NoMotionKeyword",
     kHead + "Frames: 1\nFrame Time: 0.04\n1 2 3\n",
     {{kMotionKeyword, kNote, 11, 1}},
     Joined("1") + "1 2 3\n"},
    {"FramesWithoutColon",
     kHead + "MOTION\nFrames 1\nFrame Time: 0.04\n1 2 3\n",
     {{kMotionKeyword, kNote, 12, 1}},
     Joined("1") + "1 2 3\n"},
    {"FramesGluedToItsCount",
     kHead + "MOTION\nFrames:1\nFrame Time:0.04\n1 2 3\n",
     {{kMotionKeyword, kNote, 12, 1, 2}},
     Joined("1") + "1 2 3\n"},
    {"FrameTimeInOneWord",
     kHead + "MOTION\nFrames: 1\nFrameTime: 0.04\n1 2 3\n",
     {{kMotionKeyword, kNote, 13, 1}},
     Joined("1") + "1 2 3\n"},
    {"FrameTimeFirstAndGlued",
     kHead + "MOTION\nFrame Time: 0.04\nFrames:1\n1 2 3\n",
     {{kMotionKeyword, kNote, 12, 1, 2}},
     Joined("1") + "1 2 3\n"},
    {"FrameTimeFirst",
     kHead + "MOTION\nFrame Time: 0.04\nFrames: 1\n1 2 3\n",
     {{kMotionKeyword, kNote, 12, 1}},
     Joined("1") + "1 2 3\n"},

    {"FramesMissing",
     kHead + "MOTION\nFrame Time: 0.04\n1 2 3\n4 5 6\n",
     {{kFramesMissing, kNote, 11, 1}},
     Joined("2") + "1 2 3\n4 5 6\n"},
    {"FramesWithoutCount",
     kHead + "MOTION\nFrames:\nFrame Time: 0.04\n1 2 3\n",
     {{kFramesMissing, kNote, 12, 1}},
     Joined("1") + "1 2 3\n"},
    {"FramesWithAWord",
     Header("many") + "1 2 3\n",
     {{kFramesMissing, kNote, 12, 9}},
     Joined("1") + "1 2 3\n"},
    {"FramesWithAFraction",
     Header("1.5") + "1 2 3\n",
     {{kFramesMissing, kNote, 12, 9}},
     Joined("1") + "1 2 3\n"},
    {"FramesFewer",
     Header("3") + "1 2 3\n4 5 6\n",
     {{kFramesFewer, kWarning, 12, 9}},
     Joined("2") + "1 2 3\n4 5 6\n"},
    {"FramesAbsurd",
     Header("99999999999999999999") + "1 2 3\n",
     {{kFramesFewer, kWarning, 12, 9}},
     Joined("1") + "1 2 3\n"},
    {"FramesNegative",
     Header("-1") + "1 2 3\n",
     {{kFramesFewer, kWarning, 12, 9}},
     Joined("1") + "1 2 3\n"},
    {"FramesMore",
     Header("1") + "1 2 3\n4 5 6\n",
     {{kFramesMore, kWarning, 12, 9}},
     Joined("2") + "1 2 3\n4 5 6\n"},

    {"RowCut",
     Header("2") + "1 2 3\n4 5 6\n7 8\n",
     {{kRowCut, kWarning, 16, 1}},
     Joined("2") + "1 2 3\n4 5 6\n"},
    {"RowCutThatWasCounted",
     Header("2") + "1 2 3\n4 5\n",
     {{kFramesFewer, kWarning, 12, 9}, {kRowCut, kWarning, 15, 1}},
     Joined("1") + "1 2 3\n"},
    {"OnlyRowCut",
     Header("0") + "1 2\n",
     {{kMotionEmpty, kNote, 11, 1, 1, false}, {kRowCut, kWarning, 14, 1}},
     Joined("0")},
    {"RowLengthHeld",
     Header("11") + Rows(5) + "7 8\n" + Rows(5, "4 5 6\n"),
     {{kRowLength, kWarning, 19, 1}},
     "1 2 3\n1 2 3\n4 5 6\n"},
    {"FirstRowLengthHoldsTheNext",
     Header("10") + "7 8 9 10\n" + Rows(9),
     {{kRowLength, kWarning, 14, 1}},
     Joined("10") + Rows(10)},
    {"RowLengthRefused",
     Header("9") + Rows(4) + "7 8\n" + Rows(4),
     {{kRowLength, kError, 18, 1, 1, false}},
     ""},
    {"LeadingCounter",
     Header("3") + "1 1 2 3\n2 1 2 3\n3 1 2 3\n",
     {{kRowLength, kError, 14, 1, 3, false}},
     ""},
    {"Stream", Header("2") + "1 2\n3\n4 5\n6\n", {}, ""},
    {"StreamOfWholeFrames", Header("4") + "1 2 3 4 5 6\n7 8 9 1 2 3\n", {}, ""},
    {"StreamThatIsMended", Header("2") + "1 2\n.0\n4 5\n6\n", {}, Joined("2") + "1 2 0\n4 5 6\n"},
    {"StreamOfMoreFrames",
     Header("1") + "1 2\n3\n4 5\n6\n",
     {{kFramesMore, kWarning, 12, 9}},
     Joined("2") + "1 2 3\n4 5 6\n"},
    {"StreamWithTextIsRefused",
     Header("1") + "1 2\ntext\n3\n",
     {{kRowLength, kError, 14, 1, 1, false},
      {kSurplusText, kWarning, 15, 1, 1, false},
      {kRowCut, kWarning, 16, 1, 1, false}},
     ""},
    {"UnevenStreamIsRefused",
     Header("2") + "1 2\n3\n4\n5 6\n",
     {{kRowLength, kError, 14, 1, 3, false}, {kRowCut, kWarning, 17, 1, 1, false}},
     ""},

    {"Glued",
     Header("1") + "0.0-7.5 3\n",
     {{kNumberGlued, kWarning, 14, 1}},
     Joined("1") + "0.0 -7.5 3\n"},
    {"Commas",
     Header("2") + "1,5 2 3\n-4 5,25 6\n",
     {{kNumberComma, kWarning, 14, 1, 2}},
     Joined("2") + "1.5 2 3\n-4 5.25 6\n"},
    {"CommaInTheFrameTime",
     Header("1", "0,04") + "1 2 3\n",
     {{kNumberComma, kWarning, 13, 13}},
     Joined("1") + "1 2 3\n"},
    {"CommasAndPoints",
     Header("2") + "1,5 2 3\n1,5 2.5 3\n",
     {{kNumberComma, kError, 15, 1, 1, false}},
     ""},
    {"CommasBetweenNumbers",
     Header("1") + "1.5, 2.5, 3.5\n",
     {{kNumberComma, kError, 14, 1, 2, false}},
     ""},
    {"CommasInAShortRow",
     Header("2") + "1,5,2 3\n1 2,5 3\n",
     {{kNumberComma, kError, 14, 1, 1, false}},
     ""},

    {"NotFiniteHoldsTheLastValue",
     Header("3") + "1 2 3\n4 nan 6\n7 -1.#IND 9\n",
     {{kNumberNotFinite, kWarning, 15, 3, 2}},
     Joined("3") + "1 2 3\n4 2 6\n7 2 9\n"},
    {"NotFiniteFirstHoldsTheNext",
     Header("3") + "inf 2 3\n1e999 5 6\n7 8 9\n",
     {{kNumberNotFinite, kWarning, 14, 1, 2}},
     Joined("3") + "7 2 3\n7 5 6\n7 8 9\n"},
    {"WordInARow",
     Header("2") + "1 2 3\n4 abc 6\n",
     {{kNumberNotFinite, kWarning, 15, 3}},
     Joined("2") + "1 2 3\n4 2 6\n"},
    {"NotFiniteThroughout",
     Header("2") + "1 2 nan\n4 5 nan\n",
     {{kNumberNotFinite, kError, 14, 5, 2, false}},
     ""},

    {"FrameTimeMissing",
     kHead + "MOTION\nFrames: 1\n1 2 3\n",
     {{kFrameTimeMissing, kWarning, 12, 9}},
     "Frame Time: 0.03333333333333333\n1 2 3\n"},
    {"HeaderMissing",
     kHead + "MOTION\n1 2 3\n",
     {{kFramesMissing, kNote, 11, 1}, {kFrameTimeMissing, kWarning, 12, 1}},
     Joined("1").substr(0, 10) + "Frame Time: 0.03333333333333333\n1 2 3\n"},
    {"FrameTimeZero",
     Header("1", "0") + "1 2 3\n",
     {{kFrameTimeMissing, kWarning, 13, 13}},
     "Frame Time: 0.03333333333333333\n1 2 3\n"},
    {"FrameTimeNegative",
     Header("1", "-0.04") + "1 2 3\n",
     {{kFrameTimeMissing, kWarning, 13, 13}},
     "Frame Time: 0.03333333333333333\n1 2 3\n"},
    {"FrameTimeWord",
     Header("1", "1/30") + "1 2 3\n",
     {{kFrameTimeMissing, kWarning, 13, 13}},
     "Frame Time: 0.03333333333333333\n1 2 3\n"},
    {"FrameTimeIsARate",
     Header("1", "30") + "1 2 3\n",
     {{kFrameTimeOdd, kWarning, 13, 13, 1, false}},
     ""},
    {"FrameTimeTiny",
     Header("1", "0.0004") + "1 2 3\n",
     {{kFrameTimeOdd, kWarning, 13, 13, 1, false}},
     ""},

    {"MotionMissing", kHead, {{kMotionMissing, kNote, 1, 1, 1, false}}, ""},
    {"MotionEmpty", Header("0"), {{kMotionEmpty, kNote, 11, 1, 1, false}}, ""},
    {"NothingAfterMotion", kHead + "MOTION\n", {{kMotionEmpty, kNote, 11, 1}}, "Frames: 0\n"},
    {"NothingAfterMotionButASection",
     kHead + "MOTION\n" + Header("1") + "4 5 6\n",
     {{kMotionEmpty, kNote, 11, 1}},
     "Frames: 0\n"},
    {"MotionEmptyThoughCounted",
     Header("2"),
     {{kMotionEmpty, kNote, 11, 1}, {kFramesFewer, kWarning, 12, 9}},
     Joined("0")},

    {"SurplusText",
     Header("1") + "1 2 3\nwritten by hand\nin May\n",
     {{kSurplusText, kWarning, 15, 1, 2}},
     Joined("1") + "1 2 3\n"},
    {"SurplusTextAsLongAsARow",
     Header("1") + "1 2 3\nabc 2 3\n",
     {{kSurplusText, kWarning, 15, 1}},
     Joined("1") + "1 2 3\n"},
    {"WordAtARowsStart",
     Header("2") + "1 2 3\nabc 5 6\n7 8 9\n4 5 6\n",
     {{kFramesMore, kWarning, 12, 9}, {kNumberNotFinite, kWarning, 15, 1}},
     Joined("4") + "1 2 3\n1 5 6\n7 8 9\n4 5 6\n"},
    {"FurtherSection", Header("1") + "1 2 3\n" + Header("1") + "4 5 6\n", {}, ""},
    {"QuirkInTheSecondSection",
     Header("1") + "1 2 3\n" + Header("2") + "4 5 6\n",
     {{kFramesFewer, kWarning, 26, 9}},
     Joined("1") + "1 2 3\nHIERARCHY\n"},
};

class BvhMotion : public testing::TestWithParam<BvhRow> {};

TEST_P(BvhMotion, IsReportedAndMended) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    survey_test::ExpectSurvey(GetParam(), options);
}

INSTANTIATE_TEST_SUITE_P(, BvhMotion, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

survey::BvhSurvey Survey(const std::string& text, const survey::Options& options) {
    return survey::SurveyBvh(text, options);
}

TEST(BvhMotionOptions, WithAStatedRateNoFindingIsAboutRates) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.framesPerSecond = 50.0;
    const auto odd = Survey(Header("1", "30") + "1 2 3\n", options);
    EXPECT_TRUE(odd.findings.empty());
    EXPECT_FALSE(odd.mended);
    EXPECT_EQ(odd.framesPerSecond, 50.0);
    EXPECT_EQ(odd.facts.framesPerSecond, 50.0);
    const std::string text = kHead + "MOTION\nFrames: 1\n1 2 3\n";
    const auto missing = Survey(text, options);
    EXPECT_TRUE(missing.findings.empty());
    ASSERT_TRUE(missing.mended);
    EXPECT_NE(missing.mended->Text().find("Frame Time: 0.02\n"), std::string::npos);
}

// For Purpose::Fix no text is written if no finding is mended, even if the plug-in would misread
// the file.
TEST(BvhMotionOptions, AFixNeedsAMendedFinding) {
    survey::Options options;
    options.purpose = survey::Purpose::Fix;
    std::size_t silent = 0;
    for (const BvhRow& row : kRows) {
        const auto found = Survey(row.text, options);
        const bool mends = std::any_of(row.findings.begin(), row.findings.end(),
                                       [](const auto& expected) { return expected.mended; });
        EXPECT_EQ(found.mended != nullptr, mends) << row.name;
        silent += !mends && !row.mended.empty() ? 1 : 0;
    }
    EXPECT_GE(silent, 7U);
}

TEST(BvhMotionOptions, AFixWritesOneRowForEachFrame) {
    survey::Options options;
    options.purpose = survey::Purpose::Fix;
    const std::string text = Header("1") + "1 2\n3\n4 5\n6\n";
    const auto stream = Survey(text, options);
    ASSERT_TRUE(stream.mended);
    EXPECT_NE(stream.mended->Text().find(Joined("2") + "1 2 3\n4 5 6\n"), std::string::npos);
}

struct Message {
    const char* name;
    std::string text;
    const char* message;  // the message of the only error
};

const Message kMessages[] = {
    {"Counter", Header("3") + "1 1 2 3\n2 1 2 3\n3 1 2 3\n",
     "row 1 has 4 values where the channels ask for 3; the first column rises by a constant: a "
     "leading counter?; --as-is reads on regardless"},
    {"LongRow", Header("2") + "1 2 3\n4 5 6 7\n",
     "row 2 has 4 values where the channels ask for 3; --as-is reads on regardless"},
    {"TooFewValuesForThePlugIn", Header("3") + "1 2 3\n4 5\n7 8 9\n",
     "row 2 has 2 values where the channels ask for 3; correct the rows"},
    {"Nans", Header("1") + "nan 2 3\n",
     "\"nan\" where a number was expected, and more than a quarter of the values are like that; "
     "--as-is reads on regardless"},
    {"Words", Header("1") + "1 up 3\n",
     "\"up\" where a number was expected, and more than a quarter of the values are like that; "
     "correct them"},
    {"Channels", "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 2 Xrotation\n",
     "CHANNELS announces \"2\" and is followed by 1 name; write the count that the rows have "
     "values "
     "for"},
    {"Cut", "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\n",
     "the text ends where \"}\" of a was expected; complete the file"},
    {"Offset", "HIERARCHY\nROOT a\n{\nOFFSET 0 up 0\n",
     "\"up\" where a number of OFFSET was expected; correct it"},
};

class BvhMessage : public testing::TestWithParam<Message> {};

TEST_P(BvhMessage, SaysWhatWasFoundAndWhatToDo) {
    const auto found = Survey(GetParam().text, {});
    ASSERT_EQ(found.findings.size(), 1U);
    EXPECT_EQ(found.findings[0].severity, kError);
    EXPECT_EQ(found.findings[0].message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(, BvhMessage, testing::ValuesIn(kMessages),
                         [](const auto& row) { return row.param.name; });

}  // namespace bvh_motion_test
