// What a BVH file makes in the scene.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/bvh/import_failures.h"
#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"

namespace {

using bvh_test::FailedImport;
using bvh_test::Find;
using bvh_test::Importer;
using bvh_test::kFailedImports;
using bvh_test::Scene;
using headless::Object;
using support::Lines;
using support::StatusText;
using support::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The targets of the items, with "~" at the end of those that are curves.
Lines Targets(const headless::ActionSource& action) {
    Lines lines;
    for (const auto& item : action.items)
        lines.push_back(Utf8(item.Target()) + (item.IsCurve() ? "~" : ""));
    return lines;
}

const headless::ActionSource& BasePose(const Object& model) {
    return *model.modelData->actions.at(0);
}
const headless::ActionSource& Motion(const Object& model) {
    return *model.modelData->actions.at(1);
}

class BvhImport : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }

    const Object& Import(const std::string& text, const bvh_test::Options& options = {}) {
        Importer importer(options);
        EXPECT_EQ(StatusText(importer.Import(text)), "0x00000000") << importer.Message();
        EXPECT_EQ(importer.GetModelsCount(), 1u);
        EXPECT_FALSE(importer.WasParsing());
        EXPECT_THAT(importer.Nodes(), IsEmpty());
        EXPECT_THAT(support::SceneProblems(true), IsEmpty());
        return *Scene().Models().at(0);
    }
};

TEST_F(BvhImport, MakesAModelWithTwoActionsAndAGroup) {
    const Object& model = Import(bvh_test::kChain);
    EXPECT_EQ(Utf8(model.name), "walk");
    EXPECT_EQ(model.parent, nullptr);
    ASSERT_THAT(model.modelData->actions, SizeIs(2));
    EXPECT_EQ(Utf8(BasePose(model).name), "walk_BasePose");
    EXPECT_EQ(Utf8(Motion(model).name), "walk_Motion");
    ASSERT_THAT(model.modelData->groups, SizeIs(1));
    EXPECT_EQ(Utf8(model.modelData->groups[0]->name), "walk_Animated_Objects");
    EXPECT_THAT(model.modelData->clips, IsEmpty());
}

TEST_F(BvhImport, SetsTheEndsOfItsActionsInSeconds) {
    const Object& model = Import(bvh_test::kChain);
    EXPECT_EQ(BasePose(model).animEnd, 5.0 * 0.04);
    EXPECT_EQ(Motion(model).animEnd, 2 * 0.04);
}

TEST_F(BvhImport, EndsTheBasePoseAfterFiveFrames) {
    const Object& model = Import(
        "HIERARCHY ROOT A { OFFSET 0 0 0 } MOTION Frames: 0 Frame Time: 0.033333333333333333");
    EXPECT_NEAR(BasePose(model).animEnd, 1.0 / 6.0, 1e-15);
    EXPECT_EQ(Motion(model).animEnd, 0.0);
}

TEST_F(BvhImport, RecordsEveryValueOfTheBasePoseInOrder) {
    const Object& model = Import("HIERARCHY ROOT A { OFFSET 1 2 3 End Site { OFFSET 4 5 6 } }");
    EXPECT_THAT(
        Targets(BasePose(model)),
        ElementsAre("A.kine.local.posx", "A.kine.local.posy", "A.kine.local.posz",
                    "A.kine.local.rotx", "A.kine.local.roty", "A.kine.local.rotz",
                    "A_End.kine.local.posx", "A_End.kine.local.posy", "A_End.kine.local.posz",
                    "A_End.kine.local.rotx", "A_End.kine.local.roty", "A_End.kine.local.rotz"));
    std::vector<double> values;
    for (const auto& item : BasePose(model).items) {
        EXPECT_TRUE(item.active);
        values.push_back(item.Value());
    }
    EXPECT_THAT(values, ElementsAre(1, 2, 3, 0, 0, 0, 4, 5, 6, 0, 0, 0));
}

TEST_F(BvhImport, MakesACurveForEachSlotInSlotOrder) {
    const Object& model = Import(bvh_test::kChain);
    EXPECT_THAT(
        Targets(Motion(model)),
        ElementsAre("Hips.kine.local.posx~", "Hips.kine.local.posy~", "Hips.kine.local.posz~",
                    "Hips.kine.local.rotx~", "Hips.kine.local.roty~", "Hips.kine.local.rotz~",
                    "Leg.kine.local.rotx~", "Leg.kine.local.roty~", "Leg.kine.local.rotz~"));
    for (const auto& item : Motion(model).items) {
        EXPECT_TRUE(item.active);
        EXPECT_EQ(item.GetCurve().interpolation, 1);
        EXPECT_THAT(*item.GetCurve().keys.times, ElementsAre(1, 2));
    }
    EXPECT_THAT(*Motion(model).items[1].GetCurve().keys.values, ElementsAre(20, 21));
}

TEST_F(BvhImport, KeepsRotationsThatAreListedInXyzOrder) {
    const Object& model = Import(
        "HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 2 Xrotation Zrotation } MOTION Frames: 1 Frame "
        "Time: 1 "
        "20 30");
    EXPECT_THAT(Targets(Motion(model)), ElementsAre("A.kine.local.rotx~", "A.kine.local.rotz~"));
    EXPECT_THAT(*Motion(model).items[0].GetCurve().keys.values, ElementsAre(20));
    EXPECT_THAT(*Motion(model).items[1].GetCurve().keys.values, ElementsAre(30));
}

TEST_F(BvhImport, GroupsTheAnimatedObjects) {
    const Object& model = Import(bvh_test::kTree);
    Lines members;
    for (const std::uint32_t id : model.modelData->groups[0]->members)
        members.push_back(Utf8(Scene().FindObject(id)->name));
    EXPECT_THAT(members, ElementsAre("Hips", "Spine", "Head", "Arm", "Finger", "Prop"));
}

TEST_F(BvhImport, MakesNoGroupUnlessAsked) {
    for (const bool nulls : {true, false}) {
        support::StartSession(true);
        EXPECT_THAT(Import(bvh_test::kTree, {nulls, true, false, false}).modelData->groups,
                    IsEmpty());
    }
}

TEST_F(BvhImport, MakesAnEmptyGroupIfNothingIsAnimated) {
    const Object& model = Import(bvh_test::kStill);
    ASSERT_THAT(model.modelData->groups, SizeIs(1));
    EXPECT_THAT(model.modelData->groups[0]->members, IsEmpty());
}

TEST_F(BvhImport, GivesEachNullTheOffsetOfItsJoint) {
    const Object& model = Import(bvh_test::kTree);
    const Object* const arm = Find(model, "Arm");
    ASSERT_NE(arm, nullptr);
    EXPECT_EQ(arm->type, headless::ObjectType::Null);
    EXPECT_EQ(Utf8(arm->parent->name), "Spine");
    EXPECT_THAT(arm->local, ElementsAre(4, 3, 0, 0, 0, 0));
    EXPECT_EQ(Find(model, "Hips")->parent, &model);
    EXPECT_THAT(Find(model, "Prop")->local, ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST_F(BvhImport, DeletesTheScratchPropertyAndAppliesTheBasePose) {
    Import(bvh_test::kChain);
    EXPECT_THAT(support::CommandLines(), ElementsAre("DeleteObj(walk.Hips.FcurvePset) 0",
                                                     "ApplyAction(walk.walk_BasePose, walk) 0"));
    EXPECT_THAT(support::LogLines(), IsEmpty());
}

// The scratch property is on the object of the first joint, or on the model if there are no joints.
TEST_F(BvhImport, PutsTheScratchPropertyOnTheFirstObject) {
    Import(bvh_test::kChain, {false});
    EXPECT_EQ(support::CommandLines()[0], "DeleteObj(walk.Hips.FcurvePset) 0");
    support::StartSession(true);
    Import("HIERARCHY MOTION Frames: 0 Frame Time: 1");
    EXPECT_EQ(support::CommandLines()[0], "DeleteObj(walk.FcurvePset) 0");
}

// The property is found by its full name, so joints with the property's name are left alone.
TEST_F(BvhImport, LeavesAJointCalledLikeTheScratchPropertyAlone) {
    const Object& model = Import(
        "HIERARCHY ROOT FcurvePset { OFFSET 0 0 0 JOINT FcurvePset { OFFSET 0 1 0 "
        "CHANNELS 1 Xrotation } } MOTION Frames: 1 Frame Time: 1 5");
    EXPECT_NE(Find(model, "FcurvePset"), nullptr);
    EXPECT_NE(Find(model, "FcurvePset1"), nullptr);
}

TEST_F(BvhImport, MakesCurvesWithoutKeysOfAHierarchyAlone) {
    for (const bool nulls : {true, false}) {
        support::StartSession(true);
        const Object& model = Import(
            "HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 3 Zrotation Xrotation Yrotation End Site { "
            "OFFSET 0 1 0 } }",
            {nulls});
        EXPECT_EQ(BasePose(model).animEnd, 0.0);
        EXPECT_EQ(Motion(model).animEnd, 0.0);
        ASSERT_THAT(Motion(model).items, SizeIs(3));
        for (const auto& item : Motion(model).items)
            EXPECT_EQ(item.GetCurve().keys.Count(), 0u);
    }
}

TEST_F(BvhImport, MakesCurvesWithoutKeysOfZeroFrames) {
    const Object& model = Import(
        "HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 1 Yrotation } MOTION Frames: 0 Frame Time: 0.5");
    ASSERT_THAT(Motion(model).items, SizeIs(1));
    EXPECT_EQ(Motion(model).items[0].GetCurve().keys.Count(), 0u);
    EXPECT_EQ(Motion(model).animEnd, 0.0);
    EXPECT_EQ(BasePose(model).animEnd, 2.5);
}

TEST_F(BvhImport, MakesAModelActionsAndAGroupWithoutJoints) {
    for (const bool nulls : {true, false}) {
        support::StartSession(true);
        for (const char* text : {"HIERARCHY", "hierarchy MOTION Frames: 0 Frame Time: 1"}) {
            support::StartSession(true);
            const Object& model = Import(text, {nulls});
            EXPECT_THAT(model.modelData->actions, SizeIs(2));
            EXPECT_THAT(model.modelData->groups, SizeIs(1));
            EXPECT_THAT(Scene().Objects(), SizeIs(1));
        }
    }
}

TEST_F(BvhImport, KeepsANegativeFrameTime) {
    const Object& model = Import(
        "HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 1 Xrotation } MOTION Frames: 2 "
        "Frame Time: -0.5 1 2");
    EXPECT_EQ(Motion(model).animEnd, -1.0);
}

// --- several sections ---

TEST_F(BvhImport, MakesAModelOfEachSection) {
    for (const bool nulls : {true, false}) {
        support::StartSession(true);
        Importer importer({nulls});
        ASSERT_EQ(importer.Import(bvh_test::kChain + bvh_test::kTree + bvh_test::kStill), 0);
        EXPECT_EQ(importer.GetModelsCount(), 3u);
        Lines names;
        for (const Object* model : Scene().Models()) {
            names.push_back(Utf8(model->name));
            EXPECT_EQ(Utf8(BasePose(*model).name), names.back() + "_BasePose");
            EXPECT_EQ(Utf8(Motion(*model).name), names.back() + "_Motion");
        }
        EXPECT_THAT(names, ElementsAre("walk", "walk1", "walk2"));
        EXPECT_EQ(Utf8(importer.GetLastModel().GetName()), "walk2");
        EXPECT_EQ(Utf8(importer.GetLastBasePose().GetFullName()), "walk2.walk2_BasePose");
        EXPECT_EQ(Utf8(importer.GetLastMotion().GetFullName()), "walk2.walk2_Motion");
        EXPECT_THAT(support::SceneProblems(true), IsEmpty());
    }
}

TEST_F(BvhImport, GivesEachSectionItsOwnFrames) {
    Importer importer;
    ASSERT_EQ(importer.Import(bvh_test::kChain + bvh_test::kTree), 0);
    EXPECT_EQ(Motion(*Scene().Models()[0]).items[0].GetCurve().keys.Count(), 2u);
    EXPECT_EQ(Motion(*Scene().Models()[1]).items[0].GetCurve().keys.Count(), 1u);
    EXPECT_EQ(Motion(*Scene().Models()[1]).animEnd, 0.05);
}

TEST_F(BvhImport, IgnoresTextAfterAMotionThatIsNoSection) {
    Import(bvh_test::kChain + "99 98 97 HIERARCHY broken {{{");
    support::StartSession(true);
    Import(bvh_test::kChain + "# made by hand");
}

// Without a MOTION before it, the second HIERARCHY is an invalid token inside the first.
TEST_F(BvhImport, NeedsAMotionBetweenTwoSections) {
    Importer importer;
    EXPECT_EQ(StatusText(importer.Import(
                  "HIERARCHY ROOT A { OFFSET 0 0 0 }\nHIERARCHY ROOT B { OFFSET 0 0 0 }")),
              "0x80004005");
    EXPECT_EQ(importer.Message(), "Invalid BVH token found");
}

TEST_F(BvhImport, AcceptsALastSectionWithoutMotion) {
    Importer importer;
    EXPECT_EQ(importer.Import(bvh_test::kChain + "HIERARCHY ROOT B { OFFSET 0 0 0 }"), 0);
    EXPECT_EQ(importer.GetModelsCount(), 2u);
}

// --- one importer, several imports ---

TEST_F(BvhImport, ForgetsTheResultsOfTheImportBefore) {
    Importer importer;
    ASSERT_LT(importer.Import("HIERARCHY }"), 0);
    EXPECT_TRUE(importer.WasParsing());
    ASSERT_EQ(importer.Import(bvh_test::kChain), 0);
    EXPECT_FALSE(importer.WasParsing());
    EXPECT_EQ(importer.Message(), "");
    ASSERT_EQ(importer.Import(bvh_test::kChain), 0);
    EXPECT_EQ(importer.GetModelsCount(), 1u);
    EXPECT_EQ(Utf8(importer.GetLastModel().GetName()), "walk1");
    ASSERT_LT(importer.Import("nothing"), 0);
    EXPECT_EQ(importer.GetModelsCount(), 0u);
    EXPECT_FALSE(importer.WasParsing());
}

// --- failures outside the parser ---

class BvhFailedImport : public testing::TestWithParam<FailedImport> {};

TEST_P(BvhFailedImport, ReportsItsMessageAndStatus) {
    for (const bool interactive : {true, false}) {
        support::StartSession(interactive);
        Importer importer;
        EXPECT_EQ(StatusText(importer.Import(GetParam().bytes)), GetParam().status);
        EXPECT_EQ(importer.Message(), GetParam().message);
        EXPECT_FALSE(importer.WasParsing());
        EXPECT_EQ(importer.GetModelsCount(), 0u);
        EXPECT_FALSE(importer.GetLastModel().IsValid());
        EXPECT_THAT(Scene().Objects(), IsEmpty());
        EXPECT_THAT(support::SceneProblems(false), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(, BvhFailedImport, testing::ValuesIn(kFailedImports),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(BvhImport, ChecksTheFileNameThenTheModelName) {
    Importer importer;
    EXPECT_EQ(StatusText(importer.ImportBVH(L"", L"").GetCode()), "0x80070057");
    EXPECT_EQ(importer.Message(), bvh_test::kNoFileMessage);
    EXPECT_EQ(importer.Line(), 0u);
    EXPECT_EQ(StatusText(importer.ImportBVH(L"/nonexistent", L"").GetCode()), "0x80070057");
    EXPECT_EQ(importer.Message(), bvh_test::kNoNameMessage);
    EXPECT_EQ(StatusText(importer.ImportBVH(L"/nonexistent", L"walk").GetCode()), "0x80070002");
    EXPECT_EQ(importer.Message(), kFailedImports[0].message);
}

TEST_F(BvhImport, RefusesAFolder) {
    const support::TemporaryFolder dir;
    Importer importer;
    EXPECT_EQ(StatusText(importer.ImportFile(dir.Path())), "0x80070002");
}

}  // namespace
