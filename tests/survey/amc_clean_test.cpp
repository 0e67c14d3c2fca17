// A pair that the plug-in reads as it is meant must not be mended.
#include <gtest/gtest.h>

#include "tests/survey/acclaim_case.h"

namespace amc_clean_test {

using namespace acclaim_case;

struct Row {
    const char* name;
    std::string asf;
    std::string amc;
};

std::string WithCrLf(const std::string& text) {
    std::string out;
    for (const char c : text)
        out += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return out;
}

const Row kRows[] = {
    {"Plain", CleanAsf(), CleanAmc()},
    {"CrLf", WithCrLf(CleanAsf()), WithCrLf(CleanAmc())},
    {"NoUnit", CleanAsf(), With(CleanAmc(), ":DEGREES\n", "")},
    {"OtherLetterCase", With(CleanAsf(), ":bonedata", ":BoneData"),
     With(CleanAmc(), ":FULLY-SPECIFIED", ":fully-specified")},
    {"HeaderComment", CleanAsf(), "# made by hand\n" + CleanAmc()},
    {"Exponents", CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine 3e0 1.5E+1 -2e-15")},
    {"DigitsAfterPointOnly", CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine 3. .5 -.5")},
    {"RowOnTwoLines", CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine 3 15\n -20.5")},
    {"TwoRowsOnALine", CleanAsf(), With(CleanAmc(), "-20\nlarm 4.3", "-20 larm 4.3")},
    {"BlankLines", CleanAsf(), With(CleanAmc(), "\nspine 3", "\n\n \nspine 3")},
    {"Indented", CleanAsf(), With(CleanAmc(), "\nspine 3", "\n\t spine  3")},
    {"CommasBetweenNumbers", CleanAsf(), With(CleanAmc(), "spine 3 15 -20", "spine 3, 15,-20")},
    {"StartsLater", CleanAsf(),
     ":SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n99\nroot 0 0 0 0 0 0\n"
     "spine 0 0 0\nlarm 0"},
    {"BoneOnALine", With(CleanAsf(), "begin\n    id 3\n    name rarm\n", "begin id 3 name rarm "),
     CleanAmc()},
    {"OtherBoneParameters", With(CleanAsf(), "    id 3\n", "    id 3\n    bodymass 3.5\n"),
     CleanAmc()},
    {"SectionsInAnotherOrder",
     With(With(CleanAsf(), ":name figure\n", ""), ":hierarchy", ":name figure\n:hierarchy"),
     CleanAmc()},
    {"ParentTwice", With(CleanAsf(), "spine larm rarm", "spine larm\n spine rarm"), CleanAmc()},
    {"RootOfAnotherName", With(CleanAsf(), "root spine", "hips spine"),
     [] {
         std::string amc = CleanAmc();
         while (amc.find("root") != std::string::npos)
             amc = With(amc, "root", "hips");
         return amc;
     }()},
    {"InfiniteLimits", With(CleanAsf(), "(-60 60)", "(-inf inf)"), CleanAmc()},
};

class CleanPair : public testing::TestWithParam<Row> {};

TEST_P(CleanPair, IsNotMended) {
    for (const survey::Purpose purpose :
         {survey::Purpose::Import, survey::Purpose::Fix, survey::Purpose::Check}) {
        const auto found = Survey(GetParam().asf, GetParam().amc, For(purpose));
        if (purpose != survey::Purpose::Check) {
            ExpectFindings(found.skeleton.findings, {});
            ExpectFindings(found.motions[0].findings, {});
        }
        EXPECT_FALSE(found.skeleton.mended);
        EXPECT_FALSE(found.motions[0].mended);
        EXPECT_FALSE(found.lengthMultiplier);
        EXPECT_FALSE(found.motions[0].framesPerSecond);
    }
}

INSTANTIATE_TEST_SUITE_P(, CleanPair, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace amc_clean_test
