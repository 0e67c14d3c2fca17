// Findings and mended texts about rotations, positions and end sites, with bones and without.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "tests/survey/bvh_expectation.h"

namespace {

using namespace survey::codes;
using survey::Severity;
using survey_test::BvhRow;
constexpr Severity kNote = Severity::Note;
constexpr Severity kWarning = Severity::Warning;

const std::string kHeader = "MOTION\nFrames: 2\nFrame Time: 0.04\n";
const std::string kEnd = "End Site\n{\nOFFSET 0 5 0\n}\n";

// A text with two joints that have these channels. The figure's size is 15. The child's CHANNELS
// are in line 9.
std::string Figure(const std::string& root, const std::string& child, const std::string& rows,
                   const std::string& end = kEnd) {
    return "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS " + root +
           "\nJOINT b\n{\nOFFSET 0 10 0\nCHANNELS " + child + "\n" + end + "}\n}\n" + kHeader +
           rows;
}

const std::string kTurn = "1 Zrotation";
const std::string kThree = "3 Xposition Yposition Zposition";

const BvhRow kNulls[] = {
    {"RisingXyz",
     Figure("3 Xrotation Yrotation Zrotation", kTurn, "0 0 0 7\n90 0 0 8\n"),
     {{kRotationOrder, kNote, 5, 1}},
     "CHANNELS 3 Xrotation Yrotation Zrotation\n"},
    {"RisingRowsAreReexpressed",
     Figure("3 Xrotation Yrotation Zrotation", kTurn, "0 0 10 7\n90 0 90 8.50\n"),
     {{kRotationOrder, kNote, 5, 1}},
     "\n0 0 10 7\n80 -90 10 8.50\n"},
    {"RisingPairIsCompleted",
     Figure("2 Xrotation Zrotation", "2 Yrotation Zrotation", "1 2 3 4\n5 6 7 8\n"),
     {{kRotationOrder, kNote, 5, 1, 2}},
     "CHANNELS 3 Xrotation Yrotation Zrotation\n\tJOINT b\n\t{\n\t\tOFFSET 0 10 0\n\t\tCHANNELS 3"},
    {"RisingAmongPositions",
     Figure("6 Xrotation Xposition Yrotation Yposition Zrotation Zposition", kTurn,
            "0 1.50 0 2 10 3 7\n0 1 0 2 10 3 7\n"),
     {{kRotationOrder, kNote, 5, 1}},
     "Xrotation Xposition Yrotation Yposition Zrotation Zposition\n"},
    {"OtherOrdersStay",
     Figure("3 Yrotation Xrotation Zrotation", "2 Zrotation Xrotation", "1 2 3 4 5\n1 2 3 4 5\n"),
     {},
     ""},

    {"PositionConstant",
     Figure(kTurn, kThree, "1 0 11 0\n2 0 11 0.00001\n"),
     {{kPositionConstant, kNote, 9, 1, 1, false}},
     ""},
    {"PositionMoving",
     Figure(kTurn, kThree, "1 0 11 0\n2 0 11 0.001\n"),
     {{kPositionMoving, kNote, 9, 1, 1, false}},
     ""},
    {"PositionRelative",
     Figure("4 Xposition Yposition Zposition Zrotation", kThree,
            "1 2 3 4 0 0 0\n1 2 3 4 0 0.001 0\n"),
     {{kPositionRelative, kWarning, 9, 1}},
     "\n1 2 3 4 0 10 0\n1 2 3 4 0 10.001 0\n"},
    {"PositionsNearNoOffset",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 0\nJOINT b\n{\nOFFSET 0 0 0\nCHANNELS " +
         kThree + "\n" + kEnd + "}\n}\n" + kHeader + "0 0 0\n0 0 0\n",
     {{kPositionConstant, kNote, 9, 1, 1, false}},
     ""},
    {"EndSiteMissing",
     Figure(kTurn, kTurn, "1 2\n3 4\n", ""),
     {{kEndSiteMissing, kNote, 6, 1, 1, false}},
     ""},
};

const BvhRow kBones[] = {
    {"Clean",
     Figure("4 Xposition Yposition Zposition Zrotation", kTurn, "1 2 3 4 5\n1 2 3 4 5\n"),
     {},
     ""},
    {"PositionConstantFolds",
     Figure(kTurn, "4 Xposition Yposition Zposition Zrotation", "1 0 11 0 2\n2 0 11 0.00001 3\n"),
     {{kPositionConstant, kNote, 9, 1}},
     "OFFSET 0 11 0\n\t\tCHANNELS 1 Zrotation\n"},
    {"PositionMovingDetaches",
     Figure(kTurn, kThree, "1 0 11 0\n2 0 12 0\n"),
     {{kPositionMoving, kNote, 9, 1}},
     "OFFSET 0 0 0\n\t\tCHANNELS 3 Xposition Yposition Zposition\n"},
    {"PositionMovingKeepsUnlistedComponents",
     Figure(kTurn, "1 Zposition", "1 0\n2 5\n"),
     {{kPositionMoving, kNote, 9, 1}},
     "OFFSET 0 0 0\n\t\tCHANNELS 2 Zposition Yposition\n"},
    {"PositionRelativeFolds",
     Figure(kTurn, kThree, "1 0 0 0\n2 0 0 0\n"),
     {{kPositionRelative, kWarning, 9, 1}},
     "OFFSET 0 10 0\n\t\tCHANNELS 0\n"},
    {"EndSiteAdded",
     Figure(kTurn, kTurn, "1 2\n3 4\n", ""),
     {{kEndSiteMissing, kNote, 6, 1}},
     "CHANNELS 1 Zrotation\n\t\tEnd Site\n\t\t{\n\t\t\tOFFSET 0 2.5 0\n\t\t}\n"},
    {"PositionsWithoutRowsAreLeftOut",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 0\nJOINT b\n{\nOFFSET 0 10 0\nCHANNELS 4 "
     "Xposition "
     "Yposition Zposition Zrotation\n" +
         kEnd + "}\n}\nMOTION\nFrames: 0\nFrame Time: 0.04\n",
     {{kMotionEmpty, kNote, 16, 1, 1, false}},
     "OFFSET 0 10 0\n\t\tCHANNELS 1 Zrotation\n"},
    {"PositionsWithoutMotionAreLeftOut",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 0\nJOINT b\n{\nOFFSET 0 10 0\nCHANNELS 4 "
     "Xposition "
     "Yposition Zposition Zrotation\n" +
         kEnd + "}\n}\n",
     {{kMotionMissing, kNote, 1, 1, 1, false}},
     "OFFSET 0 10 0\n\t\tCHANNELS 1 Zrotation\n"},
    {"EndSiteLosesRotations",
     Figure(kTurn, kTurn, "1 2 3 4\n5 6 7 8\n",
            "End Site\n{\nOFFSET 0 5 0\nCHANNELS 2 Yrotation Xrotation\n}\n"),
     {},
     "\t\t\tOFFSET 0 5 0\n\t\t\tCHANNELS 0\n"},
    {"EndSiteLosesRisingRotations",
     Figure("2 Xrotation Zrotation", kTurn, "1 0 3 4 5\n5 0 7 8 9\n",
            "End Site\n{\nOFFSET 0 5 0\nCHANNELS 2 Xrotation Yrotation\n}\n"),
     {{kRotationOrder, kNote, 5, 1, 2}},
     "0 0 3\n"},
    {"EndSiteWithAJointKeepsRotations",
     Figure(kTurn, kTurn, "1 2 3 4\n5 6 7 8\n",
            "End Site\n{\nOFFSET 0 5 0\nCHANNELS 1 Yrotation\nJOINT c\n{\nOFFSET 0 1 0\nCHANNELS 1 "
            "Yrotation\n" +
                kEnd + "}\n}\n"),
     {},
     ""},
    {"EndSiteAddedToAJointWithoutOffset",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 0 0\nCHANNELS 0\nEnd Site\n{\nOFFSET 0 20 0\n}\nJOINT "
     "b\n{\nOFFSET 0 0 0\nCHANNELS 1 Zrotation\n}\n}\n" +
         kHeader + "1\n2\n",
     {{kEndSiteMissing, kNote, 10, 1}},
     "\t\tEnd Site\n\t\t{\n\t\t\tOFFSET 0 1 0\n\t\t}\n"},
};

class BvhFigureOfNulls : public testing::TestWithParam<BvhRow> {};
TEST_P(BvhFigureOfNulls, IsReportedAndMended) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    survey_test::ExpectSurvey(GetParam(), options);
}
INSTANTIATE_TEST_SUITE_P(, BvhFigureOfNulls, testing::ValuesIn(kNulls),
                         [](const auto& row) { return row.param.name; });

class BvhFigureOfBones : public testing::TestWithParam<BvhRow> {};
TEST_P(BvhFigureOfBones, IsReportedAndMended) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.bones = true;
    survey_test::ExpectSurvey(GetParam(), options);
}
INSTANTIATE_TEST_SUITE_P(, BvhFigureOfBones, testing::ValuesIn(kBones),
                         [](const auto& row) { return row.param.name; });

// Purpose::Fix ignores the option `bones`.
TEST(BvhFigure, IsFixedWithoutBones) {
    survey::Options options;
    options.purpose = survey::Purpose::Fix;
    options.bones = true;
    for (const BvhRow& row : kBones) {
        const auto found = survey::SurveyBvh(row.text, options);
        const bool mends =
            std::any_of(row.findings.begin(), row.findings.end(), [](const auto& told) {
                return told.code == kPositionRelative || told.code == kRotationOrder;
            });
        EXPECT_EQ(found.mended != nullptr, mends) << row.name;
    }
}

// Purpose::Fix lists re-expressed rotations z y x, which all readers read alike.
TEST(BvhFigure, IsFixedForEveryReader) {
    const std::string text =
        Figure("3 Xrotation Yrotation Zrotation", kTurn, "0 0 10 7\n90 0 90 8.50\n");
    survey::Options options;
    options.purpose = survey::Purpose::Fix;
    const auto found = survey::SurveyBvh(text, options);
    ASSERT_TRUE(found.mended);
    const std::string& fixed = found.mended->Text();
    EXPECT_NE(fixed.find("CHANNELS 3 Zrotation Yrotation Xrotation\n"), std::string::npos) << fixed;
    EXPECT_NE(fixed.find("\n10 0 0 7\n10 -90 80 8.50\n"), std::string::npos) << fixed;
}

TEST(BvhFigure, HasFacts) {
    const std::string text =
        Figure("6 Xposition Yposition Zposition Zrotation Xrotation Yrotation",
               "3 Zrotation Yrotation Xrotation", "0 0 0 0 0 0 0 0 0\n0 0 0 0 0 0 0 0 0\n");
    const auto found = survey::SurveyBvh(text, {});
    EXPECT_EQ(found.facts.joints, 2U);
    EXPECT_EQ(found.facts.endSites, 1U);
    EXPECT_EQ(found.facts.channels, 9U);
    EXPECT_EQ(found.facts.frames, 2U);
    EXPECT_DOUBLE_EQ(found.facts.framesPerSecond.value_or(0), 25.0);
    EXPECT_DOUBLE_EQ(found.facts.seconds.value_or(0), 0.08);
    EXPECT_DOUBLE_EQ(found.facts.height.value_or(0), 15.0);
    EXPECT_EQ(found.facts.up, "y");
    EXPECT_EQ(found.facts.orders, (std::vector<std::string>{"ZXY", "ZYX"}));
    EXPECT_FALSE(found.mended);
    ASSERT_EQ(found.findings.size(), 1U);
    EXPECT_EQ(found.findings[0].code, kFigureSize);
}

TEST(BvhFigure, MessagesSayWhatIsDone) {
    const auto found =
        survey::SurveyBvh(Figure("3 Xrotation Yrotation Zrotation",
                                 "3 Xrotation Yrotation Zrotation", "1 2 3 4 5 6\n1 2 3 4 5 6\n"),
                          {});
    ASSERT_FALSE(found.findings.empty());
    EXPECT_EQ(found.findings.back().message,
              "2 joints list their rotations x y z; they are re-expressed, since the plug-in would "
              "turn x first");
}

struct Told {
    const char* name;
    std::string text;
    const char* nulls;
    const char* bones;
};

const std::string kStill = "1 0 11 0\n2 0 11 0\n";
const std::string kSway = "1 0 11 0\n2 0 12 0\n";

const Told kTold[] = {
    {"OneConstant", Figure(kTurn, kThree, kStill), "b lists positions that keep one value",
     "b lists positions that keep one value; they become its OFFSET"},
    {"OneMoving", Figure(kTurn, kThree, kSway), "b lists positions and moves apart from its parent",
     "b lists positions and moves apart from its parent; its OFFSET becomes 0 0 0"},
    {"OneEnd", Figure(kTurn, kTurn, "1 2\n3 4\n", ""), "b ends without an end site",
     "b ends without an end site; it is given one"},
    {"TwoConstant",
     Figure(kTurn, kThree, "1 0 11 0 0 3 0\n2 0 11 0 0 3 0\n",
            "JOINT c\n{\nOFFSET 0 3 0\nCHANNELS " + kThree + "\n" + kEnd + "}\n"),
     "2 joints list positions that keep one value",
     "2 joints list positions that keep one value; they become the joints' OFFSETs"},
    {"TwoMoving",
     Figure(kTurn, kThree, "1 0 11 0 0 3 0\n2 0 12 0 0 4 0\n",
            "JOINT c\n{\nOFFSET 0 3 0\nCHANNELS " + kThree + "\n" + kEnd + "}\n"),
     "2 joints list positions and move apart from their parents",
     "2 joints list positions and move apart from their parents; their OFFSETs become 0 0 0"},
    {"TwoEnds",
     Figure(kTurn, kTurn, "1 2\n3 4\n",
            "JOINT c\n{\nOFFSET 0 3 0\nCHANNELS 0\n}\nJOINT d\n{\nOFFSET 0 3 1\nCHANNELS 0\n}\n"),
     "2 joints end without an end site", "2 joints end without an end site; each is given one"},
};

class BvhJointsTold : public testing::TestWithParam<Told> {};
TEST_P(BvhJointsTold, HaveMessagesInSingularAndPlural) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    for (const bool bones : {false, true}) {
        options.bones = bones;
        const auto found = survey::SurveyBvh(GetParam().text, options);
        ASSERT_FALSE(found.findings.empty());
        const auto& finding = found.findings.front();
        EXPECT_EQ(finding.message, bones ? GetParam().bones : GetParam().nulls);
        EXPECT_EQ(finding.mended, bones);
    }
}
INSTANTIATE_TEST_SUITE_P(, BvhJointsTold, testing::ValuesIn(kTold),
                         [](const auto& row) { return row.param.name; });

// Joints of all sections are counted in one finding, which is mended if the joints of any section
// are.
TEST(BvhFigure, JointsOfAllSectionsAreOneFinding) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    options.bones = true;
    std::string apart = Figure(kTurn, kThree, kSway);
    apart.replace(apart.find("OFFSET 0 10 0"), 13, "OFFSET 0 0 0");
    const auto found = survey::SurveyBvh(apart + Figure(kTurn, kThree, kSway), options);
    ASSERT_EQ(found.findings.size(), 1U);
    EXPECT_EQ(found.findings[0].code, kPositionMoving);
    EXPECT_EQ(found.findings[0].count, 2U);
    EXPECT_TRUE(found.findings[0].mended);
    EXPECT_FALSE(survey::SurveyBvh(apart, options).mended);
}

// The lines of the mended text are mapped to those of the file.
TEST(BvhFigure, MapsMendedLinesToTheFile) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    const auto found = survey::SurveyBvh(
        "# by hand\n\nHIERARCHY ROOT a {\nOFFSET 0 1 0\n\nCHANNELS 1 Zrotation }\nMOTION\nFrames: "
        "2\nFrame Time: 0.04\n\n1\n# again\n2\n",
        options);
    ASSERT_TRUE(found.mended);
    std::vector<std::size_t> lines;
    std::size_t line = 0;
    text::StringSink sink;
    for (const survey::LineMark& mark : found.mended->Write(sink)) {
        for (++line; line < mark.mended; ++line)
            lines.push_back(lines.empty() ? line : lines.back() + 1);
        lines.push_back(mark.original);
    }
    EXPECT_EQ(lines, (std::vector<std::size_t>{3, 3, 3, 4, 6, 6, 7, 8, 9, 11, 13}));
}

}  // namespace
