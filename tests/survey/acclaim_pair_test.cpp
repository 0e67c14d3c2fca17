// Findings that depend on both the skeleton and its motions: lengths, translations, several motions
// or none.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "survey/codes.h"
#include "tests/survey/acclaim_case.h"

namespace {

using namespace acclaim_case;
using namespace survey::codes;
using survey::Purpose;
using survey::Severity;
using testing::HasSubstr;
using testing::Not;

constexpr auto kNote = Severity::Note;
constexpr auto kWarning = Severity::Warning;
constexpr auto kError = Severity::Error;

// The clean motion with one more value for `bone` in each frame: `first` in the first one, `others`
// in the others.
std::string WithLengths(const std::string& bone, const char* first, const char* others) {
    std::string amc;
    std::string rest = CleanAmc();
    bool isFirst = true;
    for (std::size_t end = rest.find('\n'); end != std::string::npos; end = rest.find('\n')) {
        amc += rest.substr(0, end);
        if (rest.starts_with(bone + " ")) {
            amc += std::string(" ") + (isFirst ? first : others);
            isFirst = false;
        }
        amc += '\n';
        rest.erase(0, end + 1);
    }
    return amc;
}

TEST(AcclaimLengthDof, BecomesTheBonesLengthWhereItKeepsOneValue) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof rz l");
    const auto found = Survey(asf, WithLengths("larm", "7.5", "7.50"), For(Purpose::Import));
    ExpectFindings(found.skeleton.findings, {{kDofLength, kNote, 33, true, 1, "larm"}});
    ASSERT_TRUE(found.skeleton.mended && found.motions[0].mended);
    EXPECT_THAT(found.skeleton.mended->Text(),
                HasSubstr("length 7.5\n    axis 10 20 30 XYZ\n    dof rz\n"));
    EXPECT_THAT(found.motions[0].mended->Text(), HasSubstr("larm 4.1\n2\n"));
}

TEST(AcclaimLengthDof, IsWrittenAsABarIfItChanges) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof rz L");
    const auto found = Survey(asf, WithLengths("larm", "7.5", "8"), For(Purpose::Import));
    ExpectFindings(found.skeleton.findings, {{kDofLength, kNote, 33, true, 1, "larm"}});
    ASSERT_TRUE(found.skeleton.mended);
    EXPECT_THAT(found.skeleton.mended->Text(), HasSubstr("dof rz |\n"));
    EXPECT_FALSE(found.motions[0].mended);
}

TEST(AcclaimLengthDof, MayNotMoveSeveralChildren) {
    const std::string asf = With(CleanAsf(),
                                 "    dof rx ry rz\n    limits (-60 60)\n           (-60 "
                                 "60)\n           (-60 60)\n",
                                 "    dof rx ry rz |\n");
    const auto moving = Survey(asf, WithLengths("spine", "40", "41"), For(Purpose::Import));
    ExpectFindings(moving.skeleton.findings, {{kDofLength, kError, 22, false, 1, "spine"}});
    EXPECT_FALSE(moving.skeleton.mended || moving.motions[0].mended);
    const auto still = Survey(asf, WithLengths("spine", "41", "41"), For(Purpose::Import));
    ExpectFindings(still.skeleton.findings, {{kDofLength, kNote, 22, true, 1, "spine"}});
    ASSERT_TRUE(still.skeleton.mended && still.motions[0].mended);
    EXPECT_THAT(still.skeleton.mended->Text(), HasSubstr("length 41\n"));
}

// A length dof of a bone that has no length at rest, with and without a child.
struct RestRow {
    const char* name;
    const char* first;
    const char* others;
    bool hasChild;
    std::vector<Told> told;
    const char* written;  // part of the mended skeleton; null if it is not mended
};

const RestRow kRestRows[] = {
    {"Leaf",
     "3",
     "4",
     false,
     {{kDofLength, kNote, 33, true, 1, "larm"}},
     "length 0\n    axis 10 20 30 XYZ\n    dof rz\n"},
    {"Child",
     "3",
     "4",
     true,
     {{kDofLength, kNote, 33, true, 1, "larm"}},
     "length 3\n    axis 10 20 30 XYZ\n    dof rz |\n"},
    {"Still",
     "3",
     "3",
     true,
     {{kDofLength, kNote, 33, true, 1, "larm"}},
     "length 3\n    axis 10 20 30 XYZ\n    dof rz\n"},
    {"Nothing", "0", "4", true, {{kDofLength, kError, 33, false, 1, "larm"}}, nullptr},
};

TEST(AcclaimLengthDof, NeedsALengthAtRestForBones) {
    for (const RestRow& row : kRestRows) {
        SCOPED_TRACE(row.name);
        std::string asf = With(With(CleanAsf(), "dof rz", "dof rz |"), "length 20", "length 0");
        if (row.hasChild) asf = With(asf, "spine larm rarm", "spine larm\n    larm rarm");
        const std::string amc = WithLengths("larm", row.first, row.others);
        survey::Options options = For(Purpose::Import);
        const auto nulls = Survey(asf, amc, options);
        ExpectFindings(nulls.skeleton.findings, {});
        EXPECT_FALSE(nulls.skeleton.mended || nulls.motions[0].mended);
        options.bones = true;
        const auto bones = Survey(asf, amc, options);
        ExpectFindings(bones.skeleton.findings, row.told);
        ASSERT_EQ(bones.skeleton.mended != nullptr, row.written != nullptr);
        if (!row.written) continue;
        EXPECT_THAT(bones.skeleton.mended->Text(), HasSubstr(row.written));
    }
}

TEST(AcclaimLengthDof, IsLeftOutWhereSeveralChildrenHaveNoValues) {
    std::string asf = With(CleanAsf(), "dof rz", "dof rz |");
    for (const char* name : {"a", "b", "c", "d", "e"})
        asf = With(asf, ":hierarchy",
                   std::string("  begin\n name ") + name +
                       "\n direction 0 0 1\n length 1\n axis 0 0 0 XYZ\n dof rx\n end\n:hierarchy");
    asf = With(asf, "larm rarm\n", "larm rarm c d e\n    larm a b\n");
    std::string amc = ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n";
    for (int frame = 1; frame <= 12; ++frame)
        amc += std::to_string(frame) +
               "\nroot 1 90 -3.5 10 20 5\nspine 1 15 -20\na 1\nb 2\nc 3\nd 4\ne 5\n";
    const auto found = Survey(asf, amc, For(Purpose::Import));
    ExpectFindings(found.skeleton.findings, {{kDofLength, kNote, 33, true, 1, "larm"}});
    ExpectFindings(found.motions[0].findings, {{kBoneMissing, kWarning, 0, true, 1, "larm"}});
    ASSERT_TRUE(found.skeleton.mended && found.motions[0].mended);
    EXPECT_THAT(found.skeleton.mended->Text(), Not(HasSubstr("|")));
    EXPECT_THAT(found.motions[0].mended->Text(), HasSubstr("larm 0\n"));
}

TEST(AcclaimLengthDof, IsJudgedByAllMotionsTogether) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof rz l");
    const std::string one = WithLengths("larm", "7.5", "7.5");
    const std::string other = WithLengths("larm", "8", "8");
    const survey::AcclaimFile motions[] = {{one, "one.amc"}, {other, "other.amc"}};
    const auto found = survey::SurveyAcclaim({asf, "a.asf"}, motions, For(Purpose::Fix));
    ASSERT_TRUE(found.skeleton.mended);
    EXPECT_THAT(found.skeleton.mended->Text(), HasSubstr("dof rz |\n"));
    EXPECT_FALSE(found.motions[0].mended || found.motions[1].mended);
}

TEST(AcclaimTranslation, IsReportedIfItIsNotZero) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof rz tx");
    const auto zero = Survey(asf, WithLengths("larm", "0", "0"), For(Purpose::Import));
    ExpectFindings(zero.skeleton.findings, {});
    ExpectFindings(zero.motions[0].findings, {});
    const auto moved = Survey(asf, WithLengths("larm", "0", "3"), For(Purpose::Import));
    ExpectFindings(moved.skeleton.findings, {});
    ExpectFindings(moved.motions[0].findings, {{kDofTranslation, kWarning, 11, false, 11, "larm"}});
    EXPECT_FALSE(moved.skeleton.mended || moved.motions[0].mended);
}

TEST(AcclaimTranslation, IsLeftOutIfABoneHasNoOtherDof) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof tx");
    const auto found = Survey(asf, CleanAmc(), For(Purpose::Import));
    ASSERT_TRUE(found.skeleton.mended && found.motions[0].mended);
    EXPECT_THAT(found.skeleton.mended->Text(), Not(HasSubstr("tx\n")));
    EXPECT_THAT(found.motions[0].mended->Text(), Not(HasSubstr("larm")));
    const auto fixed = Survey(asf, CleanAmc(), For(Purpose::Fix));
    const bool isMoved = found.motions[0].Has(Severity::Warning);
    EXPECT_EQ(fixed.skeleton.mended != nullptr, isMoved);
    EXPECT_EQ(fixed.motions[0].mended != nullptr, isMoved);
}

TEST(AcclaimTranslation, IsLeftOutIfTheOnlyOtherDofIsAFoldedLength) {
    const std::string asf = With(CleanAsf(), "dof rz", "dof tx |");
    const std::string amc = WithLengths("larm", "20", "20");
    const auto found = Survey(asf, amc, For(Purpose::Fix));
    EXPECT_FALSE(found.skeleton.mended || found.motions[0].mended);
    const auto folded = Survey(With(asf, "tx |", "tx l"), amc, For(Purpose::Fix));
    ExpectFindings(folded.skeleton.findings, {{kDofLength, kNote, 33, true, 1, "larm"}});
    ExpectFindings(folded.motions[0].findings, {{kDofTranslation, kWarning, 7, true, 12, "larm"}});
    ASSERT_TRUE(folded.skeleton.mended && folded.motions[0].mended);
    const auto again =
        Survey(folded.skeleton.mended->Text(), folded.motions[0].mended->Text(), For(Purpose::Fix));
    ExpectFindings(again.skeleton.findings, {});
    ExpectFindings(again.motions[0].findings, {});
}

TEST(AcclaimRoot, MayBeNamedRootInTheMotionOnly) {
    const std::string asf = With(CleanAsf(), "    root spine", "    hips spine");
    const auto found = Survey(asf, CleanAmc(), For(Purpose::Import));
    ExpectFindings(found.skeleton.findings, {});
    ExpectFindings(found.motions[0].findings, {});
    ASSERT_TRUE(found.motions[0].mended);
    EXPECT_THAT(found.motions[0].mended->Text(), HasSubstr("\n1\nhips 1.1 90"));
}

TEST(AcclaimAngleUnits, KeepVeryLargeAnglesFinite) {
    const std::string amc =
        With(With(CleanAmc(), ":DEGREES", ":RADIANS"), "larm 4.3", "larm -1e308");
    const auto found = Survey(CleanAsf(), amc, For(Purpose::Fix));
    ExpectFindings(found.motions[0].findings, {{kAngleUnits, kNote, 3, true}});
    ASSERT_TRUE(found.motions[0].mended);
    EXPECT_THAT(found.motions[0].mended->Text(), HasSubstr("\nlarm -1"));
    const auto again = Survey(CleanAsf(), found.motions[0].mended->Text(), For(Purpose::Fix));
    ExpectFindings(again.motions[0].findings, {});
}

TEST(AcclaimBoneMissing, StaysAtRestWhereItHasNoRowAtAll) {
    // With six bones, one may be missing, since that is not more than a fifth of them.
    std::string asf = CleanAsf();
    std::string amc = CleanAmc();
    std::string children;
    for (const char* name : {"a", "b", "c"}) {
        asf =
            With(asf, ":hierarchy",
                 std::string("  begin\n id 9\n name ") + name +
                     "\n direction 0 0 1\n length 1\n axis 0 0 0 XYZ\n dof rx |\n end\n:hierarchy");
        children += std::string(" ") + name;
    }
    asf = With(asf, "larm rarm\n", "larm rarm" + children + "\n");
    std::string all;
    for (std::size_t at = 0; at < amc.size();) {
        const std::size_t end = amc.find('\n', at) + 1;
        all += amc.substr(at, end - at);
        if (amc.compare(at, 4, "larm") == 0) all += "a 1 2\nb 2 3\n";
        at = end;
    }
    const auto found = Survey(asf, all, For(Purpose::Import));
    ExpectFindings(found.motions[0].findings, {{kBoneMissing, kWarning, 0, true, 1, "c"}});
    ASSERT_TRUE(found.motions[0].mended);
    EXPECT_THAT(found.motions[0].mended->Text(), HasSubstr("b 2 3\nc 0 1\n2\n"));
}

TEST(AcclaimPair, IsRefusedWhereMostBonesHaveNoRow) {
    std::string amc = ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n1\nroot 0 0 0 0 0 0\nhips 1 2 3\n";
    const auto found = Survey(CleanAsf(), amc, For(Purpose::Import));
    ExpectFindings(found.motions[0].findings, {{kPairMismatch, kError, 3}});
}

TEST(AcclaimPair, NamesFilesThatDoNotFit) {
    const std::string amc = CleanAmc();
    const survey::AcclaimFile motions[] = {
        {amc, "11_01.amc"}, {amc, "08_01.amc"}, {amc, "walk.amc"}};
    const auto found = survey::SurveyAcclaim({CleanAsf(), "08.asf"}, motions, For(Purpose::Fix));
    ExpectFindings(found.motions[0].findings, {{kPairMismatch, kNote}});
    ExpectFindings(found.motions[1].findings, {});
    ExpectFindings(found.motions[2].findings, {});
}

TEST(AcclaimPair, MapsMendedLinesToTheFile) {
    const auto found =
        Survey(CleanAsf(), With(CleanAmc(), "\n3\n", "\n# three\n\n3\n"), For(Purpose::Import));
    ASSERT_TRUE(found.motions[0].mended);
    std::size_t original = 0;
    text::StringSink sink;
    for (const survey::LineMark& mark : found.motions[0].mended->Write(sink))
        if (mark.mended <= 13) original = mark.original + 13 - mark.mended;
    // Line 13 of the mended text is the root's row of the third frame.
    EXPECT_EQ(original, 15U);
}

TEST(AcclaimPair, ReadsTheMotionAloneWhereTheSkeletonIsBad) {
    const auto found =
        Survey("", With(CleanAmc(), "spine 3 15 -20", "spine 3 15"), For(Purpose::Check));
    ExpectFindings(found.skeleton.findings, {{kEmpty, kError}});
    ExpectFindings(found.motions[0].findings, {{kValuesFewer, kWarning, 14, true, 1, "spine"}});
}

TEST(AmcAlone, IsComparedWithItsFirstFrame) {
    const std::string clean = CleanAmc();
    const auto found = survey::SurveyAmcAlone({clean, "a.amc"}, For(Purpose::Fix));
    ExpectFindings(found.findings, {});
    EXPECT_FALSE(found.mended);
    EXPECT_EQ(found.facts.frames, 12U);
    EXPECT_EQ(found.facts.channels, 10U);
    const std::string odd =
        With(clean, "spine 3 15 -20\nlarm 4.3\n", "larm 4.3\nspine 3 1,5 -20\n");
    const auto mended = survey::SurveyAmcAlone({odd, "a.amc"}, For(Purpose::Fix));
    ASSERT_TRUE(mended.mended);
    EXPECT_THAT(mended.mended->Text(), HasSubstr("spine 3 1.5 -20\nlarm 4.3\n"));
    EXPECT_FALSE(
        survey::SurveyAmcAlone({mended.mended->Text(), "a.amc"}, For(Purpose::Fix)).mended);
}

TEST(AcclaimCheck, ReportsLimitsAndSize) {
    const auto found = Survey(CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine 3 75.5 -20"),
                              For(Purpose::Check));
    ExpectFindings(found.motions[0].findings, {{kLimitsExceeded, kNote, 0, false, 1, "spine"}});
    EXPECT_THAT(found.motions[0].findings[0].message,
                HasSubstr("\"spine\" in 1 frame by at most 15.5"));
    ExpectFindings(found.skeleton.findings, {{kFigureSize, kNote}});
    EXPECT_EQ(found.skeleton.facts.up, "y");
    EXPECT_NEAR(found.skeleton.facts.height.value_or(0.0), 40.0 + 0.8 * 30.5, 1e-9);
}

}  // namespace
