#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <utility>

#include "headless/testing.h"
#include "tests/mocap/importer.h"
#include "tests/mocap/step_messages.h"

namespace {

using mocap_test::ActionOf;
using mocap_test::Importer;
using mocap_test::ObjectOf;
using support::StatusText;
using support::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class ActionCurves : public testing::Test {
  protected:
    void SetUp() override {
        support::StartSession(false);
        importer_.MakeModel();
        importer_.frameCount = 2;
        node_ = &importer_.AddNode("Hips", nullptr, {1, 2, 3}, {{kRotationY, {10, 20}}});
        ASSERT_TRUE(importer_.CreateNullsSkeleton().Succeeded());
        scratch_ = importer_.CreateScratchCurve();
        importer_.RecordError(Zelk::CString());
    }

    std::int32_t AddCurve(Zelk3DObject object, std::uint8_t type) {
        return importer_.AddFCurve(object, type, node_->channels[0].keys, scratch_.fcurve)
            .GetCode();
    }
    const auto& Items() { return ActionOf(importer_.lastMotion).items; }

    struct Access : Importer {
        using CMocapImportBase::ScratchCurve;
    };

    Importer importer_;
    MOCAPMODEL* node_ = nullptr;
    Access::ScratchCurve scratch_;
};

TEST_F(ActionCurves, DriveTheParameterOfTheirChannel) {
    const char* const targets[] = {"posx", "posy", "posz", "rotx", "roty", "rotz"};
    for (std::uint8_t type = 1; type <= 6; ++type) {
        EXPECT_EQ(AddCurve(node_->nullObject, type), 0);
        const auto& item = Items().back();
        EXPECT_EQ(Utf8(item.Target()), std::string("Hips.kine.local.") + targets[type - 1]);
        EXPECT_TRUE(item.IsCurve());
        EXPECT_TRUE(item.active);
        EXPECT_EQ(item.GetCurve().interpolation, 1);
        EXPECT_THAT(*item.GetCurve().keys.times, ElementsAre(1, 2));
        EXPECT_THAT(*item.GetCurve().keys.values, ElementsAre(10, 20));
    }
    EXPECT_EQ(importer_.Message(), "");
}

TEST_F(ActionCurves, DriveTheLengthOfABone) {
    Zelk::ChainRoot chain;
    ASSERT_TRUE(
        importer_.lastModel
            .Add2DChain({0, 0, 0}, {0, 3, 0}, {0, 0, 1}, Zelk::zk2DChainNormalAlign, L"Root", chain)
            .Succeeded());
    Zelk::ChainBone bone(chain.GetBones()[0]);
    bone.PutName(L"Leg");
    EXPECT_EQ(AddCurve(bone, kBoneLength), 0);
    EXPECT_EQ(Utf8(Items().back().Target()), "Leg.bone.length");
    // A null has no length.
    EXPECT_EQ(StatusText(AddCurve(node_->nullObject, kBoneLength)), "0x80020003");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoParameter);
}

TEST_F(ActionCurves, RefuseAnUnknownChannelType) {
    for (const int type : {0, 8, 100, 254, 255}) {
        EXPECT_EQ(StatusText(AddCurve(node_->nullObject, static_cast<std::uint8_t>(type))),
                  "0x80020003");
        EXPECT_EQ(importer_.Message(), "");
    }
    EXPECT_THAT(Items(), IsEmpty());
}

TEST_F(ActionCurves, NeedAnObject) {
    EXPECT_EQ(StatusText(AddCurve(Zelk3DObject(), kRotationX)), "0x80020003");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoParameter);
}

TEST_F(ActionCurves, ReportThatTheKeysWereNotSet) {
    headless::FailOperation("SetKeys", 1);
    EXPECT_EQ(StatusText(AddCurve(node_->nullObject, kRotationX)), "0x80004005");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoKeys);
    EXPECT_THAT(Items(), IsEmpty());
}

TEST_F(ActionCurves, ReportThatTheItemWasNotMade) {
    headless::FailOperation("AddSourceItem", 1);
    EXPECT_EQ(StatusText(AddCurve(node_->nullObject, kRotationX)), "0x80004005");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoCurveItem);
}

TEST_F(ActionCurves, HaveNoKeysWithoutFrames) {
    importer_.frameCount = 0;
    EXPECT_EQ(importer_.AddFCurve(node_->nullObject, kRotationX, {}, scratch_.fcurve).GetCode(), 0);
    EXPECT_EQ(Items().back().GetCurve().keys.Count(), 0u);
}

TEST_F(ActionCurves, KeepTheirOwnKeysWhenTheScratchCurveIsUsedAgain) {
    ASSERT_EQ(AddCurve(node_->nullObject, kRotationX), 0);
    importer_.Fill(node_->channels[0], {kRotationY, {10, 99}});
    ASSERT_EQ(AddCurve(node_->nullObject, kRotationY), 0);
    EXPECT_THAT(*Items()[0].GetCurve().keys.values, ElementsAre(10, 20));
    EXPECT_THAT(*Items()[1].GetCurve().keys.values, ElementsAre(10, 99));
}

// --- a whole node ---

TEST_F(ActionCurves, AreMadeForTheImportedChannelsOfANode) {
    importer_.Fill(node_->channels[3], {kIgnoredChannel, {1, 2}});
    importer_.Fill(node_->channels[5], {kPositionX, {3, 4}});
    EXPECT_TRUE(importer_.AttachCurves(*node_, scratch_.fcurve).Succeeded());
    ASSERT_THAT(Items(), SizeIs(2));
    EXPECT_EQ(Utf8(Items()[0].Target()), "Hips.kine.local.roty");
    EXPECT_EQ(Utf8(Items()[1].Target()), "Hips.kine.local.posx");
}

TEST_F(ActionCurves, OfANodeStopAtTheFirstFailure) {
    importer_.Fill(node_->channels[1], {kBoneLength, {1, 2}});
    importer_.Fill(node_->channels[2], {kPositionX, {3, 4}});
    EXPECT_EQ(StatusText(importer_.AttachCurves(*node_, scratch_.fcurve).GetCode()), "0x80020003");
    EXPECT_EQ(importer_.Message(), "Failed to add channel FCurve");
    EXPECT_THAT(Items(), SizeIs(1));
}

TEST_F(ActionCurves, AreNotMadeForAChannelWithoutKeys) {
    node_->channels[0].keys.reset();
    EXPECT_TRUE(importer_.AttachCurves(*node_, scratch_.fcurve).Succeeded());
    EXPECT_THAT(Items(), IsEmpty());
}

// --- the base pose ---

TEST_F(ActionCurves, BasePoseHoldsTheCurrentValue) {
    const auto before = ActionOf(importer_.lastBasePose).items.size();
    double value = 0.0;
    EXPECT_EQ(importer_.AddBasePose(node_->nullObject, L"posy", &value).GetCode(), 0);
    EXPECT_EQ(value, 2.0);
    EXPECT_EQ(importer_.AddBasePose(node_->nullObject, L"posz", nullptr).GetCode(), 0);
    const auto& items = ActionOf(importer_.lastBasePose).items;
    ASSERT_EQ(items.size(), before + 2);
    EXPECT_EQ(Utf8(items[before].Target()), "Hips.kine.local.posy");
    EXPECT_EQ(items[before].Value(), 2.0);
    EXPECT_FALSE(items[before].IsCurve());
    EXPECT_TRUE(items[before].active);
    EXPECT_EQ(items[before + 1].Value(), 3.0);
}

TEST_F(ActionCurves, BasePoseFailsForAParameterThatTheObjectLacks) {
    importer_.RecordError(L"earlier");
    double value = 42.0;
    for (const wchar_t* parameter : {L"bone.length", L"length", L"sclx", L"", L"RotX"})
        EXPECT_EQ(StatusText(importer_.AddBasePose(node_->nullObject, parameter, &value).GetCode()),
                  "0x8000FFFF");
    EXPECT_EQ(StatusText(importer_.AddBasePose(Zelk3DObject(), L"posx", &value).GetCode()),
              "0x8000FFFF");
    EXPECT_EQ(value, 42.0);
    EXPECT_EQ(importer_.Message(), "earlier");
}

TEST_F(ActionCurves, BasePoseGivesItsValueEvenIfTheItemIsNotMade) {
    headless::FailOperation("AddSourceItem", 1);
    double value = 0.0;
    EXPECT_EQ(StatusText(importer_.AddBasePose(node_->nullObject, L"posx", &value).GetCode()),
              "0x80004005");
    EXPECT_EQ(value, 1.0);
    EXPECT_EQ(importer_.Message(), mocap_test::kNoPoseItem);
}

// --- the end of a motion ---

TEST_F(ActionCurves, ScratchPropertyIsOnTheFirstNode) {
    ASSERT_THAT(ObjectOf(node_->nullObject).Properties(), SizeIs(1));
    EXPECT_EQ(Utf8(ObjectOf(node_->nullObject).Properties()[0]->name), "FcurvePset");
    EXPECT_EQ(Utf8(ObjectOf(node_->nullObject).Properties()[0]->curves.at(0).name), "fcurve");
    EXPECT_EQ(ObjectOf(node_->nullObject).Properties()[0]->curves[0].curve.interpolation, 1);
}

TEST_F(ActionCurves, FinishDeletesTheScratchPropertyAndAppliesTheBasePose) {
    EXPECT_TRUE(importer_.FinishMotion(scratch_).Succeeded());
    EXPECT_THAT(ObjectOf(node_->nullObject).Properties(), IsEmpty());
    EXPECT_THAT(support::CommandLines(), ElementsAre("DeleteObj(Skel.Hips.FcurvePset) 0",
                                                     "ApplyAction(Skel.Skel_BasePose, Skel) 0"));
}

TEST_F(ActionCurves, FinishFailsOnlyIfTheBasePoseIsNotApplied) {
    headless::FailOperation("DeleteObj", 1);
    EXPECT_TRUE(importer_.FinishMotion(scratch_).Succeeded());
    headless::FailOperation("ApplyAction", 1);
    EXPECT_FALSE(importer_.FinishMotion(scratch_).Succeeded());
}

}  // namespace
