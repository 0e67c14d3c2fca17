// The keys that the parser makes of the frames of an AMC file, and its warnings about other text.
#include <clocale>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/status.h"
#include "math/angles.h"
#include "tests/support/acclaim/parsed_acclaim.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;

class AmcParser : public testing::Test {
  protected:
    void SetUp() override { std::setlocale(LC_CTYPE, "C.UTF-8"); }

    // Parses a root with the channels of `order`, and bones a, b, c... with the degrees of freedom
    // in `dofs`.
    void Skeleton(const std::string& order, const std::vector<std::string>& dofs,
                  const std::string& units = "") {
        std::string text =
            ":version 1\n:units " + units + "\n:root order " + order + "\n:bonedata\n";
        char name = 'a';
        for (const std::string& dof : dofs)
            text += std::string("begin name ") + name++ + "\n length 1 direction 1 0 0\n dof " +
                    dof + "\n end\n";
        ASSERT_EQ(parsed.Parse(text), (Outcome{1, "", 0}));
    }
    void Parse(const std::string& frames) { ASSERT_EQ(parsed.ParseMotion(frames), Outcome()); }
    std::vector<double> Values(const std::string& node, std::size_t slot) {
        return parsed.Keys(node, slot).values;
    }

    ParsedAcclaim parsed;
};

TEST_F(AmcParser, TimesKeysWithTheNumbersOfTheFrames) {
    Skeleton("tx ry", {"rz |"});
    Parse("7\nroot 1 2\na 3 4\n9\nroot 5 6\na 7 8\n");
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{7, 9}, {1, 5}}));
    EXPECT_EQ(parsed.Keys("root", 1), (TestCurve{{7, 9}, {2, 6}}));
    EXPECT_EQ(parsed.Keys("a", 0), (TestCurve{{7, 9}, {3, 7}}));
    EXPECT_EQ(parsed.Keys("a", 1), (TestCurve{{7, 9}, {4, 8}}));
    EXPECT_EQ(parsed.skeleton.frameCount, 2u);
    EXPECT_THAT(parsed.Warnings(), IsEmpty());
}

TEST_F(AmcParser, AcceptsAnyFrameNumbers) {
    Skeleton("tx", {});
    Parse("3\nroot 1\n3\nroot 2\n-2\nroot 3\n0\nroot 4\n12abc\nroot 5");
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{3, 3, -2, 0, 12}, {1, 2, 3, 4, 5}}));
}

TEST_F(AmcParser, NeedsNoLineBreaks) {
    Skeleton("tx ty", {"rx"});
    Parse("1 root (1, 2) a 3 2 root 4 5 # a comment\n a 6");
    EXPECT_THAT(Values("root", 1), ElementsAre(2, 5));
    EXPECT_THAT(Values("a", 0), ElementsAre(3, 6));
}

TEST_F(AmcParser, FindsBonesByNameInTheFirstFrameAndByPositionLater) {
    Skeleton("tx", {"rx", "ry"});
    Parse("1\nB 1\nRoot 2\na 3\n2\nroot 4\na 5\nb 6\n3\nx 7\ny 8\nz 9\n");
    EXPECT_THAT(Values("b", 0), ElementsAre(1, 4, 7));
    EXPECT_THAT(Values("root", 0), ElementsAre(2, 5, 8));
    EXPECT_THAT(Values("a", 0), ElementsAre(3, 6, 9));
}

TEST_F(AmcParser, ConvertsRadiansToDegrees) {
    Skeleton("tx rx", {"rz |"}, "angle rad length 2");
    Parse("1\nroot 1 1\na 1 1");
    EXPECT_THAT(Values("root", 0), ElementsAre(1.0));
    EXPECT_THAT(Values("root", 1), ElementsAre(math::kDegreesPerRadian));
    EXPECT_THAT(Values("a", 0), ElementsAre(math::kDegreesPerRadian));
    EXPECT_THAT(Values("a", 1), ElementsAre(2.0));
}

TEST_F(AmcParser, ScalesPositionsOnlyByAGivenFactor) {
    parsed.parser.OverrideLengthMultiplier(true, 10.0);
    Skeleton("tx rx", {"|"}, "length 2");
    Parse("1\nroot 1 1\na 1");
    EXPECT_THAT(Values("root", 0), ElementsAre(10.0));
    EXPECT_THAT(Values("root", 1), ElementsAre(1.0));
    EXPECT_THAT(Values("a", 0), ElementsAre(10.0));
}

struct LimitRow {
    const char* name;
    const char* limits;
    double low;   // what -45 becomes
    double high;  // what 50 becomes
};
const LimitRow kLimits[] = {
    {"Both", "(-30 30)", -30, 30},        {"Wide", "(-60 60)", -45, 50},
    {"Infinite", "(-inf inf)", -45, 50},  {"BelowOnly", "(-30 inf)", -30, 50},
    {"AboveOnly", "(-inf 30)", -45, 30},  {"Crossed", "(60 -60)", -60, -60},
    {"NotNumbers", "(nan nan)", -45, 50},
};

class Limits : public AmcParser, public testing::WithParamInterface<LimitRow> {};

TEST_P(Limits, LimitValuesOnlyWhenAsked) {
    for (const bool apply : {false, true}) {
        parsed.parser.ApplyLimits(apply);
        Skeleton("tx", {std::string("rx\n limits ") + GetParam().limits});
        Parse("1\nroot 0\na -45\n2\nroot 0\na 50");
        if (apply)
            EXPECT_THAT(Values("a", 0), ElementsAre(GetParam().low, GetParam().high));
        else
            EXPECT_THAT(Values("a", 0), ElementsAre(-45, 50));
    }
}

INSTANTIATE_TEST_SUITE_P(, Limits, testing::ValuesIn(kLimits),
                         [](const auto& row) { return std::string(row.param.name); });

// Angles are compared with their limits in degrees, lengths in the unit of the file.
TEST_F(AmcParser, LimitsLengthsBeforeItScalesThem) {
    parsed.parser.ApplyLimits(true);
    Skeleton("tx", {"| rx\n limits (1 5) (-1 1)"}, "length 2 angle rad");
    Parse("1\nroot 0\na 9 2");
    EXPECT_THAT(Values("a", 0), ElementsAre(10.0));
    EXPECT_THAT(Values("a", 1), ElementsAre(math::kDegreesPerRadian));
}

TEST_F(AmcParser, MakesNoKeysForIgnoredChannels) {
    Skeleton("tx", {"tx rx ty", "tz"});
    // The second bone has only an ignored channel, so a frame is complete without it.
    Parse("1\nroot 1\na 2 3 4\n2\nroot 5\na 6 7 8\n");
    EXPECT_THAT(Values("a", 0), IsEmpty());
    EXPECT_THAT(Values("a", 1), ElementsAre(3, 7));
    EXPECT_THAT(Values("a", 2), IsEmpty());
    EXPECT_THAT(parsed.Warnings(), IsEmpty());
}

TEST_F(AmcParser, WarnsOfOneRecordTooMany) {
    Skeleton("tx", {"rx", "tz"});
    Parse("1\nroot 1\na 2\nb 3\n2\nroot 5\na 6\nb 7\n");
    EXPECT_THAT(Values("a", 0), ElementsAre(2, 6));
    EXPECT_THAT(parsed.Warnings(), ElementsAre("Invalid keyword found (b) at line 4, ignoring...",
                                               "Invalid keyword found (b) at line 8, ignoring..."));
}

TEST_F(AmcParser, ConsumesTheValuesOfABoneThatIsNotAnimated) {
    Skeleton("tx", {"rx", "tz"});
    Parse("1\nroot 1\nb 3\n2\nroot 5\nb 7");
    EXPECT_THAT(Values("root", 0), ElementsAre(1, 5));
    EXPECT_THAT(Values("a", 0), IsEmpty());
}

// --- Skipped text ---

TEST_F(AmcParser, SkipsOtherLinesBetweenFrames) {
    Skeleton("tx", {});
    Parse("word 1 2 3\n1\nroot 1\n:fully-specified 2\n\n  lost words\n2\nroot 2\n");
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{1, 2}, {1, 2}}));
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Invalid keyword found (word) at line 1, ignoring...",
                            "Invalid keyword found (:fully-specified) at line 4, ignoring...",
                            "Invalid keyword found (lost) at line 6, ignoring..."));
}

// The parser does not recognise the token after a comment as a frame number.
TEST_F(AmcParser, LosesTheFrameAfterAComment) {
    Skeleton("tx", {});
    Parse("1\nroot 1\n# note\n2\nroot 2\n3\nroot 3\n# end");
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{1, 3}, {1, 3}}));
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Invalid keyword found (2) at line 4, ignoring...",
                            "Invalid keyword found (root) at line 5, ignoring..."));
}

TEST_F(AmcParser, SkipsALastLineThatIsNoFrame) {
    Skeleton("tx", {});
    Parse("1\nroot 1\nend of 2 frames");
    EXPECT_EQ(parsed.skeleton.frameCount, 1u);
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Invalid keyword found (end) at line 3, ignoring..."));
}

TEST_F(AmcParser, WarnsOfKeywordsOfAnyBytes) {
    Skeleton("tx", {});
    const std::string word(10000, 'w');
    Parse(
        "1\nroot 1\nBr\xC3\xBC"
        "cke\nBr\xFC"
        "cke\n\xFF\n%s%n\n" +
        word + "\n");
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Invalid keyword found (Br\xC3\xBC"
                            "cke) at line 3, ignoring...",
                            "Invalid keyword found (Br) at line 4, ignoring...",
                            "Invalid keyword found () at line 5, ignoring...",
                            "Invalid keyword found (%s%n) at line 6, ignoring...",
                            "Invalid keyword found (" + word + ") at line 7, ignoring..."));
}

// --- Unknown bones ---

TEST_F(AmcParser, LosesTwoRecordsOfTheFrameToAnUnknownBone) {
    Skeleton("tx", {"rx", "ry", "rz"});
    Parse("1\nroot 1\nnobody\na 2\n2\nroot 3\na 4\nb 5\n3\nroot 6\na 7\nb 8\n");
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{1, 2, 3}, {1, 3, 6}}));
    EXPECT_EQ(parsed.Keys("a", 0), (TestCurve{{1, 2, 3}, {2, 4, 7}}));
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Unknown bone (nobody) referenced in AMC file at line 3, "
                            "ignoring..."));
}

// A bone that never appears has no keys.
TEST_F(AmcParser, RepeatsTheFirstValueOfABoneThatAppearsLate) {
    Skeleton("tx", {"rx", "ry", "rz"});
    Parse("1\nroot 1\nnobody\na 2\n2\nroot 3\na 4\nb 5\n3\nroot 6\na 7\nb 8\n");
    EXPECT_EQ(parsed.Keys("b", 0), (TestCurve{{1, 2, 3}, {5, 5, 8}}));
    EXPECT_EQ(parsed.Keys("c", 0), TestCurve());
}

TEST_F(AmcParser, LosesMoreRecordsIfTheUnknownBoneHasValues) {
    Skeleton("tx", {"rx", "ry", "rz", "rx", "ry"});
    Parse("1\nnobody 5 6\nroot 1\n2\nroot 2\na 3\nb 4\n");
    EXPECT_THAT(parsed.Warnings(),
                ElementsAre("Unknown bone (nobody) referenced in AMC file at line 2, ignoring...",
                            "Unknown bone (5) referenced in AMC file at line 2, ignoring...",
                            "Unknown bone (6) referenced in AMC file at line 2, ignoring...",
                            "Invalid keyword found (root) at line 3, ignoring..."));
    // Three of the six animated nodes are left, and two frames were started.
    EXPECT_EQ(parsed.Keys("b", 0), (TestCurve{{1, 2}, {4, 4}}));
    EXPECT_EQ(parsed.Keys("c", 0), TestCurve());
}

TEST_F(AmcParser, AddsABoneAtTheNextFreePosition) {
    Skeleton("tx", {"rx", "ry"});
    Parse("1\nnobody\nb 1\n2\nx 2\nroot 3\n");
    EXPECT_EQ(parsed.Keys("b", 0), (TestCurve{{1, 2}, {1, 2}}));
    EXPECT_EQ(parsed.Keys("root", 0), (TestCurve{{1, 2}, {3, 3}}));
    EXPECT_EQ(parsed.Keys("a", 0), TestCurve());
}

TEST_F(AmcParser, MakesNoKeysIfNoBoneIsKnown) {
    Skeleton("tx", {"rx"});
    Parse("1\nx\n2\ny\n3\n4\n5\n");
    EXPECT_EQ(parsed.skeleton.frameCount, 5u);
    EXPECT_EQ(parsed.Keys("root", 0), TestCurve());
    EXPECT_EQ(parsed.Keys("a", 0), TestCurve());
}

// --- Nothing to read ---

TEST_F(AmcParser, ReadsNothingWithoutAnimatedBones) {
    Skeleton("", {"tx", ""});
    Parse("not a motion\n");
    EXPECT_EQ(parsed.skeleton.frameCount, 0u);
    EXPECT_THAT(parsed.Warnings(), IsEmpty());
}

TEST_F(AmcParser, ReadsNothingWithoutASkeleton) {
    ASSERT_EQ(parsed.Parse(":version 1"), (Outcome{1, "", 0}));
    Parse("not a motion\n");
    EXPECT_THAT(parsed.Warnings(), IsEmpty());
}

}  // namespace
