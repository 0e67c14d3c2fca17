// The items of action sources.
#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;

namespace {

class Items : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        action = model.AddActionSource(L"Walk");
    }
    const headless::ActionItem& Last() const { return RecordOf(action).items.back(); }

    Zelk::Model model;
    Zelk::Null hips;
    Zelk::ActionSource action;
};

static_assert(sizeof(headless::ActionItem) <= 24, "large skeletons have millions of them");

TEST_F(Items, AreInTheOrderTheyWereAdded) {
    const Scratch scratch = AddScratch(hips);
    action.AddSourceItem(L"Hips.kine.local.posx", 1.5, true);
    action.AddSourceItem(L"Hips.kine.local.rotx", scratch.curve.GetRef(), false);
    action.AddSourceItem(L"anything", -2.0, false);
    const auto& items = RecordOf(action).items;
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].Value(), 1.5);
    EXPECT_TRUE(items[0].active);
    EXPECT_FALSE(items[0].IsCurve());
    EXPECT_TRUE(items[1].IsCurve());
    EXPECT_FALSE(items[1].active);
    EXPECT_EQ(items[1].GetCurve().keys.Count(), 0u);
    EXPECT_EQ(items[2].Value(), -2.0);
}

TEST_F(Items, GiveTheirTargetsAsTheyWereGiven) {
    for (const wchar_t* target : {L"Hips.kine.local.posx",
                                  L"Hips.kine.local.posy",
                                  L"Hips.kine.local.posz",
                                  L"Hips.kine.local.rotx",
                                  L"Hips.kine.local.roty",
                                  L"Hips.kine.local.rotz",
                                  L"Hips.bone.length",
                                  L"Nobody.kine.local.posx",
                                  L"Nobody.bone.length",
                                  L"kine.local.posx",
                                  L"bone.length",
                                  L".kine.local.posx",
                                  L".bone.length",
                                  L"..kine.local.posx",
                                  L"Hips.kine.local.sclx",
                                  L"Hips.kine.local",
                                  L"Hipskine.local.posx",
                                  L"xbone.length",
                                  L"posx",
                                  L" ",
                                  L"腰.R.kine.local.rotz",
                                  L"a.kine.local.posx.kine.local.posx",
                                  L"Skel.kine.local.posx",
                                  L"Hips.Hips.kine.local.posx"}) {
        EXPECT_TRUE(action.AddSourceItem(target, 1.0, true).IsValid()) << target;
        EXPECT_EQ(Wide(Last().Target()), target);
    }
}

TEST_F(Items, ResolveAsTheirTargetsDo) {
    const Zelk::ChainRoot chain = AddChain(hips, {}, {1, 0, 0});
    AddBone(chain, {2, 0, 0}, L"Arm");
    for (const wchar_t* target :
         {L"Hips.kine.local.posx", L"Hips.bone.length", L"Arm.bone.length", L"kine.local.roty",
          L"bone.length", L".kine.local.posx", L"Nobody.kine.local.rotx", L"Hips", L"posx"}) {
        action.AddSourceItem(target, 1.0, true);
        const auto byText = Scene().ResolveTarget(RecordOf(model), target);
        const auto byItem = Scene().ResolveTarget(RecordOf(model), Last());
        EXPECT_EQ(byItem.object, byText.object) << target;
        EXPECT_EQ(byItem.channel, byText.channel) << target;
    }
}

TEST_F(Items, ShareTheTextOfTheObjectsName) {
    action.AddSourceItem(L"Hips.kine.local.posx", 1.0, true);
    EXPECT_EQ(Last().object.GetWideString(), RecordOf(hips).name.GetWideString());
    action.AddSourceItem(L"Knee.kine.local.posx", 1.0, true);
    const wchar_t* const unknown = Last().object.GetWideString();
    action.AddSourceItem(L"Knee.kine.local.posy", 1.0, true);
    EXPECT_EQ(Last().object.GetWideString(), unknown) << "that of the item before, at least";
}

TEST_F(Items, KeepTheirTargetsWhenObjectsAreRenamedOrDeleted) {
    action.AddSourceItem(L"Hips.kine.local.posx", 1.0, true);
    hips.PutName(L"Pelvis");
    EXPECT_EQ(Wide(Last().Target()), L"Hips.kine.local.posx");
    EXPECT_EQ(Scene().ResolveTarget(RecordOf(model), Last()).object, nullptr);
    const Zelk::Null other = AddNull(model, L"Hips");
    EXPECT_EQ(Scene().ResolveTarget(RecordOf(model), Last()).object, &RecordOf(other));
    Delete(L"Skel.Hips");
    EXPECT_EQ(Wide(Last().Target()), L"Hips.kine.local.posx");
}

TEST_F(Items, AreHandlesOfTheirAction) {
    const Zelk::AnimationSourceItem first = action.AddSourceItem(L"a", 1.0, true);
    const Zelk::AnimationSourceItem second = action.AddSourceItem(L"b", 1.0, true);
    EXPECT_TRUE(first.IsValid());
    EXPECT_FALSE(first.GetRef() == second.GetRef());
    Delete(L"Skel");
    EXPECT_FALSE(first.IsValid());
    EXPECT_FALSE(second.IsValid());
}

TEST_F(Items, NeedATargetAnActionAndACurve) {
    const Scratch scratch = AddScratch(hips);
    const std::wstring before = SceneText();
    const Zelk::CRef curve = scratch.curve.GetRef();
    EXPECT_FALSE(action.AddSourceItem(L"", 1.0, true).IsValid());
    EXPECT_FALSE(action.AddSourceItem(L"", curve, true).IsValid());
    for (const Zelk::CRef& other : {Zelk::CRef(), hips.GetRef(), scratch.property.GetRef(),
                                    scratch.parameter.GetRef(), action.GetRef()})
        EXPECT_FALSE(action.AddSourceItem(L"Hips.kine.local.posx", other, true).IsValid());
    Zelk::ActionSource noAction(hips.GetRef());
    EXPECT_FALSE(noAction.AddSourceItem(L"Hips.kine.local.posx", curve, true).IsValid());
    EXPECT_FALSE(noAction.AddSourceItem(L"Hips.kine.local.posx", 1.0, true).IsValid());
    EXPECT_EQ(SceneText(), before);
}

}  // namespace
