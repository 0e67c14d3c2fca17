#include "pairing/skeleton_pairing.h"

#include <gmock/gmock.h>

namespace {

using pairing::FindSkeleton;
using testing::HasSubstr;

struct Pair {
    const char* name;
    const char* motion;
    std::vector<std::string> skeletons;
    const char* skeleton;  // the expected one; empty if none
    const char* problem = "";
};

void PrintTo(const Pair& pair, std::ostream* out) {
    *out << pair.motion;
}

const Pair kPairs[] = {
    {"SameName", "walk.amc", {"run.asf", "walk.asf"}, "walk.asf"},
    {"Subject", "07_01.amc", {"07.asf", "08.asf"}, "07.asf"},
    {"SubjectWithDash", "07-01.amc", {"07.asf", "08.asf"}, "07.asf"},
    {"SubjectWithSpace", "07 walk.amc", {"07.asf", "08.asf"}, "07.asf"},
    {"SubjectWithDot", "07.take.amc", {"07.asf", "08.asf"}, "07.asf"},
    {"NoLongerNumber", "070_01.amc", {"07.asf", "08.asf"}, "", "none of the 2 .asf files"},
    {"NoLongerWord", "walking.amc", {"walk.asf", "run.asf"}, "", "none of the 2 .asf files"},
    {"NoLongerJapaneseWord", "歩行者.amc", {"歩.asf", "走.asf"}, "", "none of the 2 .asf files"},
    {"NameWithDashAtItsEnd", "s-1.amc", {"s-.asf", "t-.asf"}, "s-.asf"},
    {"LongestName", "07_01_b.amc", {"07.asf", "07_01.asf"}, "07_01.asf"},
    {"LongestNameInAnyCase", "A_b_1.amc", {"A.asf", "a_B.asf"}, "a_B.asf"},
    {"WholeNameBeforeItsBeginning", "07_01.amc", {"07.asf", "07_01.asf"}, "07_01.asf"},
    {"AnyCase", "WALK_01.AMC", {"run.asf", "walk.ASF"}, "walk.ASF"},
    {"AnyCaseBeyondAscii", "ÉTÉ_01.amc", {"run.asf", "été.asf"}, "été.asf"},
    {"SameCaseBeforeOther", "Walk.amc", {"WALK.asf", "Walk.asf", "walk.asf"}, "Walk.asf"},
    {"OnlyOneOfItsFolder", "take.amc", {"subject.asf"}, "subject.asf"},
    {"OnlyOneWithLongerName", "walk.amc", {"walk_b.asf"}, "walk_b.asf"},
    {"NoneAtAll", "take.amc", {}, "", "the motion's folder has no .asf file"},
    {"SeveralOthers", "take.amc", {"a.asf", "b.asf", "c.asf"}, "", "none of the 3 .asf files"},
    {"TwoAlike", "walk.amc", {"walk.ASF", "walk.asf"}, "", "walk.ASF and walk.asf both fit"},
    {"TwoAlikeByCase", "walk.amc", {"WALK.asf", "Walk.asf"}, "", "WALK.asf and Walk.asf both fit"},
    {"BothPacked", "07_01.amc.gz", {"07.asf.gz", "08.asf.gz"}, "07.asf.gz"},
    {"PackedMotion", "07_01.AMC.GZ", {"07.asf", "08.asf"}, "07.asf"},
    {"PackedSkeleton", "07_01.amc", {"07.asf.gz", "08.asf.gz"}, "07.asf.gz"},
    {"PackedAsTheMotion", "07_01.amc.gz", {"07.asf", "07.asf.gz"}, "07.asf.gz"},
    {"PlainAsTheMotion", "07_01.amc", {"07.asf", "07.asf.gz"}, "07.asf"},
    {"LongerNameBeforePacking", "07_01_b.amc", {"07.asf", "07_01.asf.gz"}, "07_01.asf.gz"},
    {"TwoAlikeByPacking", "7.amc", {"7.ASF", "7.asf", "7.asf.gz"}, "", "7.ASF and 7.asf both fit"},
    {"TwoAlikeAndABetterOne", "a_b.amc", {"A.asf", "a_B.asf", "Á.asf"}, "a_B.asf"},
};

class SkeletonPairing : public testing::TestWithParam<Pair> {};

TEST_P(SkeletonPairing, IsAsExpected) {
    const pairing::Pairing pairing = FindSkeleton(GetParam().motion, GetParam().skeletons);
    EXPECT_EQ(pairing.skeleton, GetParam().skeleton);
    EXPECT_THAT(pairing.problem, HasSubstr(GetParam().problem));
    EXPECT_EQ(pairing.skeleton.empty(), !pairing.problem.empty());
}

INSTANTIATE_TEST_SUITE_P(, SkeletonPairing, testing::ValuesIn(kPairs),
                         [](const auto& row) { return row.param.name; });

TEST(FindSkeleton, DoesNotDependOnTheOrder) {
    const std::vector<std::string> one = {"07.asf", "07_01.asf", "A.asf"};
    const std::vector<std::string> other = {"A.asf", "07_01.asf", "07.asf"};
    EXPECT_EQ(FindSkeleton("07_01_x.amc", one).skeleton,
              FindSkeleton("07_01_x.amc", other).skeleton);
}

}  // namespace
