// What an AMC file makes in the scene, and what the host sees of the import.
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/testing.h"
#include "host/status.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;

constexpr double kThirtieth = 0.03333333333333333;

class MotionScene : public testing::Test {
  protected:
    void SetUp() override { StartSession(true); }

    void ImportAsf(const std::string& asf, bool nulls = true) {
        importer.SetOptions(nulls, true, false, true);
        ASSERT_EQ(ImportSkeleton(importer, asf), Outcome());
    }
    void ImportAmc(const std::string& amc) {
        ASSERT_EQ(ImportMotion(importer, amc), Outcome());
        EXPECT_FALSE(importer.WasParsing());
        EXPECT_THAT(SceneProblems(true), IsEmpty());
    }
    static TestCurve Curve(const std::string& target) {
        const auto curves = MotionCurves();
        return curves.count(target) > 0 ? curves.at(target) : TestCurve();
    }

    CAcclaimImport importer;
};

TEST_F(MotionScene, HasACurveForEachChannel) {
    ImportAsf(kSampleAsf);
    ImportAmc(kSampleAmc);
    EXPECT_THAT(MotionCurves(),
                UnorderedElementsAre(Key("root.kine.local.posx"), Key("root.kine.local.posy"),
                                     Key("root.kine.local.posz"), Key("root.kine.local.rotx"),
                                     Key("root.kine.local.roty"), Key("root.kine.local.rotz"),
                                     Key("back.kine.local.rotx"), Key("back.kine.local.roty"),
                                     Key("back.kine.local.rotz"), Key("joint.kine.local.rotx"),
                                     Key("joint.kine.local.roty"), Key("joint.kine.local.rotz"),
                                     Key("arm.kine.local.rotx"), Key("arm.kine.local.roty"),
                                     Key("arm.kine.local.rotz"), Key("hand.kine.local.posx"),
                                     Key("hand.kine.local.posy"), Key("hand.kine.local.posz")));
    EXPECT_EQ(Curve("root.kine.local.posx"), (TestCurve{{1, 2, 3}, {1, 1.5, 2}}));
    EXPECT_EQ(Curve("hand.kine.local.posx"), (TestCurve{{1, 2, 3}, {1, 1.25, 1.5}}));
    EXPECT_EQ(Curve("hand.kine.local.posy"), (TestCurve{{1, 2, 3}, {0, 0, 0}}));
}

TEST_F(MotionScene, DrivesLengthsOfBones) {
    ImportAsf(kSampleAsf, false);
    ImportAmc(kSampleAmc);
    EXPECT_EQ(MotionCurves().size(), 16u);
    EXPECT_EQ(Curve("arm.bone.length"), (TestCurve{{1, 2, 3}, {1, 1.25, 1.5}}));
}

TEST_F(MotionScene, LeavesTheModelInItsBasePose) {
    ImportAsf(kSampleAsf);
    ImportAmc(kSampleAmc);
    EXPECT_THAT(ObjectNamed("root").local, ElementsAre(1, 2, 3, 0, 0, 0));
    EXPECT_THAT(CommandLines(), ElementsAre("DeleteObj(skel.root.FcurvePset) 0",
                                            "ApplyAction(skel.skel_BasePose, skel) 0"));
    EXPECT_EQ(importer.GetLastMotion().GetName(), Zelk::CString(L"motion"));
}

// --- Length in seconds ---

struct RateRow {
    const char* name;
    const char* head;
    double end;
};
const RateRow kRates[] = {
    {"None", "", 120 * kThirtieth},
    {"HundredTwenty", ":SAMPLES-PER-SECOND 120\n", 120 * (1.0 / 120)},
    {"OtherLetters", "# a\n:samples-per-second\n\n 60\n", 120 * (1.0 / 60)},
    {"One", ":SAMPLES-PER-SECOND 1\n", 120 * kThirtieth},
    {"Zero", ":SAMPLES-PER-SECOND 0\n", 120 * kThirtieth},
    {"Negative", ":SAMPLES-PER-SECOND -120\n", 120 * kThirtieth},
    {"Fraction", ":SAMPLES-PER-SECOND 29.97\n", 120 * (1.0 / 29)},
};

class MotionRate : public MotionScene, public testing::WithParamInterface<RateRow> {};

TEST_P(MotionRate, GivesTheEndOfTheMotion) {
    ImportAsf(":version 1\n:root order tx");
    std::string frames;
    for (int frame = 1; frame <= 120; ++frame)
        frames += std::to_string(frame) + "\nroot 0\n";
    ImportAmc(GetParam().head + std::string(":Fully-Specified\n") + frames);
    EXPECT_EQ(ActionNamed("motion").animEnd, GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(, MotionRate, testing::ValuesIn(kRates),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(MotionScene, EndsAtTheHighestUnsignedFrameNumber) {
    ImportAsf(":version 1\n:root order tx");
    ASSERT_EQ(ImportMotion(importer, ":fully-specified\n9\nroot 1\n-1\nroot 2\n3\nroot 3"),
              Outcome());
    EXPECT_EQ(ActionNamed("motion").animEnd, 4294967295.0 * kThirtieth);
}

TEST_F(MotionScene, KeepsTheRateForLaterImports) {
    ImportAsf(":version 1\n:root order tx");
    ImportAmc(":SAMPLES-PER-SECOND 50\n:fully-specified\n1\nroot 1");
    ImportAmc(":fully-specified\n10\nroot 1");
    EXPECT_EQ(ActionNamed("motion1").animEnd, 10 * (1.0 / 50));
    StartSession(true);
    ImportAsf(":version 1\n:root order tx");
    EXPECT_EQ(ActionNamed("skel_BasePose").animEnd, 5 * (1.0 / 50));
}

// --- Angle units ---

TEST_F(MotionScene, MayBeInRadiansIfTheSkeletonIs) {
    ImportAsf(":version 1\n:units angle rad\n:root order rx");
    ImportAmc(":FULLY-SPECIFIED\n:Radians\n1\nroot 0");
    EXPECT_EQ(ImportMotion(importer, ":fully-specified\n:DEGREES\n1\nroot 0").message,
              "Incompatible AMC file. File must use same angle units as the ASF file");
}

TEST_F(MotionScene, MayLeaveItsUnitToTheSkeleton) {
    ImportAsf(":version 1\n:units angle rad\n:root order tx");
    ImportAmc(":fully-specified\n1\nroot 7");
    EXPECT_EQ(Curve("root.kine.local.posx"), (TestCurve{{1}, {7}}));
    EXPECT_THAT(LogLines(), IsEmpty());
}

// A comment before the first frame makes the parser lose that frame, as it does between frames.
TEST_F(MotionScene, LosesTheFrameAfterAComment) {
    ImportAsf(":version 1\n:root order tx");
    ImportAmc(":fully-specified # :radians\n1\nroot 7\n2\nroot 8");
    EXPECT_EQ(Curve("root.kine.local.posx"), (TestCurve{{2}, {8}}));
    EXPECT_THAT(LogLines(), ElementsAre("4: Invalid keyword found (1) at line 2, ignoring...",
                                        "4: Invalid keyword found (root) at line 3, ignoring..."));
}

// --- Motions with few or no keys ---

TEST_F(MotionScene, WithoutFramesHasCurvesWithoutKeys) {
    for (const bool nulls : {true, false}) {
        StartSession(true);
        ImportAsf(kSampleAsf, nulls);
        ImportAmc(":fully-specified\n:degrees\n");
        EXPECT_EQ(MotionCurves().size(), nulls ? 18u : 16u);
        EXPECT_EQ(Curve("back.kine.local.rotx"), TestCurve());
        EXPECT_EQ(ActionNamed("motion").animEnd, 0.0);
    }
}

TEST_F(MotionScene, WithoutNodesIsEmpty) {
    ImportAsf(":version 1");
    ImportAmc(":fully-specified\n1\nroot 1");
    EXPECT_THAT(MotionCurves(), IsEmpty());
    EXPECT_THAT(CommandLines(), ElementsAre("DeleteObj(skel.FcurvePset) 0",
                                            "ApplyAction(skel.skel_BasePose, skel) 0"));
}

// A bone that no frame names keeps its base pose, whatever the conversions do to the other bones.
TEST_F(MotionScene, HasNoCurveForABoneThatNeverAppears) {
    for (const bool nulls : {true, false}) {
        StartSession(true);
        ImportAsf(kSampleAsf, nulls);
        ImportAmc(":fully-specified\n1\nroot 1 2 3 4 5 6\nback 1 2 3\nnobody\n");
        EXPECT_THAT(MotionCurves(),
                    UnorderedElementsAre(Key("root.kine.local.posx"), Key("root.kine.local.posy"),
                                         Key("root.kine.local.posz"), Key("root.kine.local.rotx"),
                                         Key("root.kine.local.roty"), Key("root.kine.local.rotz"),
                                         Key("back.kine.local.rotx"), Key("back.kine.local.roty"),
                                         Key("back.kine.local.rotz")));
    }
}

// --- One motion after another ---

class SecondMotion : public testing::TestWithParam<bool> {};

TEST_P(SecondMotion, IsReadLikeTheFirst) {
    StartSession(true);
    CAcclaimImport importer;
    importer.SetOptions(GetParam(), true, false, true);
    ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
    ASSERT_EQ(ImportMotion(importer, kSampleAmc), Outcome());
    const auto first = MotionCurves();
    ASSERT_EQ(ImportMotion(importer, kSampleAmc), Outcome());
    EXPECT_EQ(MotionCurves("motion1"), first);
    EXPECT_EQ(importer.GetLastMotion().GetName(), Zelk::CString(L"motion1"));
    ASSERT_EQ(ImportMotion(importer,
                           ":fully-specified\n5\nback 1 2 3\nroot 1 2 3 4 5 6\njoint 7 8\n"
                           "arm 1 2 3\n"),
              Outcome());
    EXPECT_EQ(MotionCurves("motion2").size(), first.size());
    EXPECT_EQ(MotionCurves("motion2").at("root.kine.local.posz"), (TestCurve{{5}, {3}}));
    EXPECT_THAT(SceneProblems(true), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, SecondMotion, testing::Bool(),
                         [](const auto& row) { return row.param ? "Nulls" : "Bones"; });

}  // namespace
