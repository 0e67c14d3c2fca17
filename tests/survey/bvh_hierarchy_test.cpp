// Findings and mended texts about hierarchies.
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "tests/survey/bvh_expectation.h"

namespace bvh_hierarchy_test {

using namespace survey::codes;
using survey::Severity;
using survey_test::BvhRow;
using namespace std::string_literals;
using namespace std::string_view_literals;
constexpr Severity kNote = Severity::Note;
constexpr Severity kWarning = Severity::Warning;
constexpr Severity kError = Severity::Error;

const std::string kTurns = "CHANNELS 3 Zrotation Xrotation Yrotation\n";
const std::string kMotion = "MOTION\nFrames: 1\nFrame Time: 0.04\n1 2 3\n";
const std::string kMotionOfTwo = "MOTION\nFrames: 1\nFrame Time: 0.04\n1 2 3 4 5 6\n";
const std::string kEnd = "End Site\n{\nOFFSET 0 1 0\n}\n";

// A hierarchy with one root. `body` is what its braces hold.
std::string Root(const std::string& body) {
    return "HIERARCHY\nROOT a\n{\n" + body + "}\n";
}
std::string Rest(const std::string& text) {
    return Root("OFFSET 0 1 0\n" + kTurns + text);
}
std::string Joint(const std::string& name, const std::string& below) {
    return "JOINT " + name + "\n{\nOFFSET 0 2 0\n" + kTurns + below + "}\n";
}
// The mended text of Rest(kEnd) + kMotion.
const std::string kWritten =
    "HIERARCHY\nROOT a\n{\n\tOFFSET 0 1 0\n\tCHANNELS 3 Zrotation Xrotation Yrotation\n\tEnd "
    "Site\n\t{\n\t\tOFFSET 0 1 0\n\t}\n}\nMOTION\nFrames: 1\nFrame Time: 0.04\n1 2 3\n";

const BvhRow kRows[] = {
    {"Clean", Rest(kEnd) + kMotion, {}, ""},
    {"CleanInOneLine",
     "hierarchy root a { offset 0 1 0 channels 3 zROTATION Xrotation Yrotation end SITE { offset 0 "
     "1 "
     "0 } } motion frames: 1 frame time: 0.04 1 2 3",
     {},
     ""},
    {"JointAtTheTop",
     "HIERARCHY\nJOINT a\n{\nOFFSET 0 1 0\n" + kTurns + kEnd + "}\n" + kMotion,
     {},
     ""},
    {"TwoRoots",
     Rest(kEnd) + "ROOT b\n{\nOFFSET 0 1 0\n" + kTurns + kEnd + "}\n" + kMotionOfTwo,
     {},
     ""},
    {"ChannelsNone", Root("OFFSET 0 1 0\nCHANNELS 0\n" + Joint("b", kEnd)) + kMotion, {}, ""},
    {"NameOnTheNextLine",
     "HIERARCHY\nROOT\na\n{\nOFFSET 0 1 0\n" + kTurns + kEnd + "}\n" + kMotion,
     {},
     ""},
    {"NameLikeAKeyword",
     Root("OFFSET 0 1 0\n" + kTurns + Joint("End", kEnd)) + kMotionOfTwo,
     {},
     ""},
    {"PointZeroInAnOffset", Root("OFFSET .0 1 +0\n" + kTurns + kEnd) + kMotion, {}, kWritten},
    {"VerticalTab", Root("OFFSET 0\v1 0\n" + kTurns + kEnd) + kMotion, {}, kWritten},
    {"NulBeforeAll", "\0\0 "s + Root("OFFSET 0 1 0\n" + kTurns + kEnd) + kMotion, {}, kWritten},
    {"NulBetweenWords", Root("OFFSET 0\0001 0\n"s + kTurns + kEnd) + kMotion, {}, kWritten},

    {"EndSiteTexts",
     Rest("End Site4\n{\nOFFSET 0 1 0\n}\nEnd Site-7\n{\nOFFSET 0 1 0\n}\nEnd Site Toe\n{\nOFFSET "
          "0 1 "
          "0\n}\nEndSite\n{\nOFFSET 0 1 0\n}\nEnd_Site {\nOFFSET 0 1 0\n}\n") +
         kMotion,
     {{kEndSiteText, kNote, 6, 1, 5}},
     "\tEnd Site\n\t{\n\t\tOFFSET 0 1 0\n\t}\n\tEnd Site\n"},
    {"BracesGlued",
     "HIERARCHY\nROOT a{\nOFFSET 0 1 0\n" + kTurns + "End Site\n{OFFSET 0 1 0\n}}\n" + kMotion,
     {{kBraceGlued, kNote, 2, 7, 3}},
     kWritten},
    {"BraceGluedToANumberThatIsTheLast",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 1 0\n" + kTurns + "End Site\n{\nOFFSET 0 1 0}}\n" + kMotion,
     {},
     ""},
    {"BraceGluedToANumberInTheMiddle",
     Rest("End Site\n{\nOFFSET 0 1 0}\n" + Joint("b", kEnd)) + kMotionOfTwo,
     {{kBraceGlued, kNote, 8, 13}},
     "OFFSET 0 1 0\n\t}\n\tJOINT b\n"},
    {"BraceInAName",
     "HIERARCHY\nROOT a{b\n{\nOFFSET 0 1 0\n" + kTurns + kEnd + "}\n" + kMotion,
     {},
     ""},
    {"NameWithBlanks",
     Rest(Joint("Left  Up Leg ", kEnd)) + kMotionOfTwo,
     {{kNameBlank, kNote, 6, 7}},
     "JOINT Left_Up_Leg\n"},
    {"NameMissing", "HIERARCHY\nROOT\n{\n}\n", {{kNameMissing, kError, 2, 1, 1, false}}, ""},
    {"NameDuplicate",
     Rest(Joint("b", kEnd) + Joint("b", kEnd)) +
         "MOTION\nFrames: 1\nFrame Time: 0.04\n1 2 3 4 5 6 7 8 9\n",
     {{kNameDuplicate, kNote, 15, 1, 1, false}},
     ""},
    {"Comments",
     "# by hand\n// too\n" + Rest("  # the end\n" + kEnd) + kMotion,
     {{kHierarchyWord, kNote, 1, 1, 3}},
     kWritten},
    {"UnknownWord",
     Rest("LIMITS 0 1\n" + kEnd) + kMotion,
     {{kHierarchyWord, kError, 6, 1, 1, false}},
     ""},
    {"UnknownWordAtTheTop",
     Rest(kEnd) + "POSE\n" + kMotion,
     {{kHierarchyWord, kError, 11, 1, 1, false}},
     ""},
    {"WordBeforeTheHierarchy",
     "BVH file\n" + Rest(kEnd) + kMotion,
     {{kHierarchyWord, kError, 1, 1, 1, false}},
     ""},
    {"BraceMissing",
     "HIERARCHY\nROOT a\nOFFSET 0 1 0\n",
     {{kHierarchyWord, kError, 3, 1, 1, false}},
     ""},
    {"SecondOffset",
     Rest("OFFSET 0 0 0\n") + kMotion,
     {{kHierarchyWord, kError, 6, 1, 1, false}},
     ""},
    {"Utf8Mark", "\xEF\xBB\xBF" + Rest(kEnd) + kMotion, {{kByteOrderMark, kNote, 1, 1}}, kWritten},
    {"OtherEncoding",
     Rest(Joint("H\xFC"
                "fte",
                kEnd)) +
         kMotionOfTwo,
     {{kTextEncoding, kWarning, 6, 7}},
     "JOINT H\xC3\xBC"
     "fte\n"},

    {"OffsetMissing",
     Root(kTurns + kEnd) + kMotion,
     {{kOffsetMissing, kNote, 2, 1}},
     "\tOFFSET 0 0 0\n\tCHANNELS 3"},
    {"OffsetAfterChannels",
     Root(kTurns + "OFFSET 0 1 0\n" + kEnd) + kMotion,
     {{kOffsetMissing, kNote, 5, 1}},
     kWritten},
    {"OffsetTooShort", Root("OFFSET 0 1\n" + kTurns), {{kNumberBad, kError, 4, 1, 1, false}}, ""},
    {"OffsetTooLong",
     Root("OFFSET 0 1 0 1\n" + kTurns),
     {{kNumberBad, kError, 4, 14, 1, false}},
     ""},
    {"OffsetWord", Root("OFFSET 0 up 0\n" + kTurns), {{kNumberBad, kError, 4, 10, 1, false}}, ""},
    {"OffsetNotFinite", Root("OFFSET 0 nan 0\n"), {{kNumberBad, kError, 4, 10, 1, false}}, ""},
    {"OffsetWithCommas",
     Root("OFFSET 0 1,5 0\n" + kTurns + kEnd) + kMotion,
     {{kNumberComma, kWarning, 4, 1}},
     "OFFSET 0 1.5 0\n"},
    {"OffsetWithCommasAndPoints",
     Root("OFFSET 0.5 1,5 0\n" + kTurns + kEnd) + kMotion,
     {{kNumberComma, kError, 4, 1, 1, false}},
     ""},
    {"OffsetGlued",
     Root("OFFSET 0 1-2\n" + kTurns + kEnd) + kMotion,
     {{kNumberGlued, kWarning, 4, 10}},
     "OFFSET 0 1 -2\n"},

    {"ChannelsMissing",
     Rest("JOINT b\n{\nOFFSET 0 1 0\n" + kEnd + "}\n") + kMotion,
     {{kChannelsMissing, kNote, 6, 1, 1, false}},
     ""},
    {"ChannelsTooMany",
     Root("OFFSET 0 1 0\nCHANNELS 2 Zrotation Xrotation Yrotation\n"),
     {{kChannelsBad, kError, 5, 10, 1, false}},
     ""},
    {"ChannelsTooFew",
     Root("OFFSET 0 1 0\nCHANNELS 6 Zrotation Xrotation Yrotation\n"),
     {{kChannelsBad, kError, 5, 10, 1, false}},
     ""},
    {"ChannelUnknown",
     Root("OFFSET 0 1 0\nCHANNELS 2 Zrotation Wrotation\n"),
     {{kChannelsBad, kError, 5, 22, 1, false}},
     ""},
    {"ChannelTwice",
     Root("OFFSET 0 1 0\nCHANNELS 2 Zrotation Zrotation\n"),
     {{kChannelsBad, kError, 5, 22, 1, false}},
     ""},
    {"ChannelsWithoutCount",
     Root("OFFSET 0 1 0\nCHANNELS Zrotation\n"),
     {{kChannelsBad, kError, 5, 10, 1, false}},
     ""},
    {"ChannelsTwice", Rest("CHANNELS 0\n"), {{kChannelsBad, kError, 6, 1, 1, false}}, ""},

    {"BracesOpenDecidedByIndentation",
     "HIERARCHY\nROOT a\n{\n OFFSET 0 1 0\n " + kTurns + " JOINT b\n {\n  OFFSET 0 1 0\n  " +
         kTurns + "  End Site\n  {\n   OFFSET 0 1 0\n  }\n JOINT c\n {\n  OFFSET 0 1 0\n  " +
         kTurns +
         "  End Site\n  {\n   OFFSET 0 1 0\n  }\n }\n}\n"
         "MOTION\nFrames: 1\nFrame Time: 0.04\n1 2 3 4 5 6 7 8 9\n",
     {{kBracesOpen, kWarning, 3, 1}},
     "\t}\n\tJOINT c\n"},
    {"BracesOpenWithoutIndentation",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 1 0\n" + kTurns + Joint("b", kEnd) + kMotionOfTwo,
     {{kBracesOpen, kWarning, 3, 1}},
     "ROOT a\n{\n\tOFFSET 0 1 0\n\tCHANNELS 3 Zrotation Xrotation Yrotation\n\tJOINT b\n"},
    {"HierarchyCut",
     "HIERARCHY\nROOT a\n{\nOFFSET 0 1 0\n",
     {{kHierarchyCut, kError, 4, 13, 1, false}},
     ""},
    {"BraceTooMany", Rest(kEnd) + "}\n" + kMotion, {{kHierarchyCut, kError, 11, 1, 1, false}}, ""},
    {"Empty", " \n", {{kEmpty, kError, 0, 0, 1, false}}, ""},
    {"NotBvh", "1 2 3\n", {{kNotBvh, kError, 1, 1, 1, false}}, ""},
};

class BvhHierarchy : public testing::TestWithParam<BvhRow> {};

TEST_P(BvhHierarchy, IsReportedAndMended) {
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    survey_test::ExpectSurvey(GetParam(), options);
}

INSTANTIATE_TEST_SUITE_P(, BvhHierarchy, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

struct Kind {
    const char* name;
    std::string_view text;
    std::string_view described;
};
const Kind kKinds[] = {
    {"Gzip", "\x1F\x8B\x08\0rest"sv, "gzip data"},
    {"Zip", "PK\x03\x04"sv, "a zip archive"},
    {"Html", "<!DOCTYPE html><html>", "a web page (HTML)"},
    {"Asf", "# a skeleton\n:version 1.10\n", "an Acclaim skeleton (ASF)"},
    {"Amc", "#!OML:ASF\n:FULLY-SPECIFIED\n:DEGREES\n1\n", "an Acclaim motion (AMC)"},
    {"Numbers", "1 2 3\n4 5 6\n", "numbers alone"},
    {"Binary", "\x01\x02\x03", "binary data"},
    {"Json", "{\"a\": 1}", "JSON"},
    {"Words", "Once upon a time", "text of another kind"},
};

class NotBvh : public testing::TestWithParam<Kind> {};

TEST_P(NotBvh, SaysWhatTheTextLooksLike) {
    const survey::BvhSurvey found = survey::SurveyBvh(GetParam().text, {});
    ASSERT_EQ(found.findings.size(), 1U);
    EXPECT_EQ(found.findings[0].code, kNotBvh);
    EXPECT_NE(found.findings[0].message.find(GetParam().described), std::string::npos)
        << found.findings[0].message;
}

INSTANTIATE_TEST_SUITE_P(, NotBvh, testing::ValuesIn(kKinds),
                         [](const auto& row) { return row.param.name; });

}  // namespace bvh_hierarchy_test
