#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"

using namespace host_test;

namespace {

using Names = HostScene;

TEST_F(Names, AreUniqueWithinAModel) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hand = AddNull(model, L"Hand");
    EXPECT_EQ(NameOf(hand), L"Hand");
    EXPECT_EQ(NameOf(AddNull(model, L"Hand")), L"Hand1");
    EXPECT_EQ(NameOf(AddNull(hand, L"Hand")), L"Hand2");
    EXPECT_EQ(NameOf(AddChain(hand, {}, {1, 0, 0}, L"Hand")), L"Hand3");
}

TEST_F(Names, MayBeEqualInTwoModels) {
    EXPECT_EQ(NameOf(AddNull(AddModel(L"A"), L"Hand")), L"Hand");
    EXPECT_EQ(NameOf(AddNull(AddModel(L"B"), L"Hand")), L"Hand");
    EXPECT_EQ(NameOf(AddNull(SceneRoot(), L"Hand")), L"Hand");
}

TEST_F(Names, LeaveTheModelsOwnNameToIt) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null null = AddNull(model, L"Skel");
    EXPECT_EQ(NameOf(null), L"Skel1");
    const Zelk::Null deeper = AddNull(null, L"x");
    Zelk::Null(deeper).PutName(L"Skel");
    EXPECT_EQ(NameOf(deeper), L"Skel2");
}

TEST_F(Names, OfModelsAreUniqueInTheScene) {
    const Zelk::Model first = AddModel(L"Skel");
    EXPECT_EQ(NameOf(AddModel(L"Skel")), L"Skel1");
    const Zelk::Model below = AddModel(L"Skel", first);
    EXPECT_EQ(NameOf(below), L"Skel2");
    EXPECT_EQ(NameOf(AddModel(L"Skel", AddNull(below, L"x"))), L"Skel3");
    EXPECT_EQ(NameOf(AddNull(SceneRoot(), L"Skel")), L"Skel4");
}

TEST_F(Names, OfModelsDifferFromTheObjectsAroundThem) {
    const Zelk::Model outer = AddModel(L"Outer");
    AddNull(outer, L"Inner");
    AddNull(outer, L"Inner1");
    const Zelk::Model inner = AddModel(L"Inner", outer);
    EXPECT_EQ(NameOf(inner), L"Inner2");
    EXPECT_EQ(NameOf(AddModel(L"Inner")), L"Inner") << "no other name stayed reserved";
    EXPECT_EQ(NameOf(AddNull(outer, L"Inner2")), L"Inner21");
}

TEST_F(Names, OfObjectsInANewModelDifferFromItsOwn) {
    const Zelk::Null skel = AddNull(SceneRoot(), L"Hips");
    const Zelk::Model model = AddModel(L"Hips", SceneRoot(), Refs({skel}));
    EXPECT_EQ(NameOf(model), L"Hips1") << "the object was in the scene when the model was named";
    EXPECT_EQ(NameOf(skel), L"Hips");
    EXPECT_EQ(NameOf(AddNull(model, L"Hips1")), L"Hips11");
}

TEST_F(Names, OfActionsGroupsAndPropertiesAreKeptApart) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    EXPECT_EQ(NameOf(model.AddActionSource(L"Hips")), L"Hips");
    EXPECT_EQ(NameOf(model.AddActionSource(L"Hips")), L"Hips1");
    EXPECT_EQ(NameOf(AddGroup(model, L"Hips", {})), L"Hips");
    EXPECT_EQ(NameOf(AddGroup(model, L"Hips", {})), L"Hips1");
    EXPECT_EQ(NameOf(AddProperty(hips, L"Hips")), L"Hips");
    EXPECT_EQ(NameOf(AddProperty(hips, L"Hips")), L"Hips1");
    EXPECT_EQ(NameOf(AddProperty(model, L"Hips")), L"Hips");
    EXPECT_EQ(NameOf(AddModel(L"Other").AddActionSource(L"Hips")), L"Hips");
    EXPECT_EQ(NameOf(AddNull(model, L"Hips2")), L"Hips2");
}

TEST_F(Names, OfClipsAreThoseOfTheirMotions) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::ActionSource motion = model.AddActionSource(L"Skel_Motion");
    ASSERT_EQ(AddClip(model, motion), Zelk::status::kOk);
    ASSERT_EQ(AddClip(model, motion), Zelk::status::kOk);
    const auto& clips = RecordOf(model).modelData->clips;
    ASSERT_EQ(clips.size(), 2u);
    EXPECT_EQ(Wide(clips[0].name), L"Skel_Motion_Clip");
    EXPECT_EQ(Wide(clips[1].name), L"Skel_Motion_Clip1");
    EXPECT_EQ(clips[1].source, motion.GetRef().Object());
}

TEST_F(Names, AreMissingFromTheFirstBoneAndTheEffector) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::ChainRoot chain = AddChain(model, {}, {1, 0, 0}, L"ArmRoot");
    Zelk::ChainBone bone = BoneOf(chain, 0);
    Zelk::ChainEffector effector = chain.GetEffector();
    EXPECT_EQ(NameOf(chain), L"ArmRoot");
    EXPECT_EQ(NameOf(bone), L"");
    EXPECT_EQ(NameOf(effector), L"");
    for (const wchar_t* name : {L"Bone", L"Effector", L"ArmRoot1"})
        EXPECT_EQ(NameOf(AddNull(model, name)), name) << "nothing is taken";
    bone.PutName(L"Arm");
    effector.PutName(L"ArmEff");
    EXPECT_EQ(NameOf(bone), L"Arm");
    EXPECT_EQ(NameOf(effector), L"ArmEff");
    EXPECT_EQ(NameOf(AddBone(chain, {2, 0, 0}, L"Arm")), L"Arm1");
}

TEST_F(Names, StayMissingWhenAChainMovesToAnotherModel) {
    const Zelk::ChainRoot chain = AddChain(AddModel(L"A"), {}, {1, 0, 0});
    Zelk::Model other = AddModel(L"B");
    ASSERT_TRUE(other.AddChild(Refs({chain})).Succeeded());
    EXPECT_EQ(NameOf(BoneOf(chain, 0)), L"");
    EXPECT_EQ(NameOf(chain.GetEffector()), L"");
    EXPECT_EQ(FullNameOf(chain), L"B.Root");
}

TEST_F(Names, HaveADefaultForEachType) {
    const Zelk::Model model = AddModel(L"");
    EXPECT_EQ(NameOf(model), L"Model");
    EXPECT_EQ(NameOf(AddNull(model, L"")), L"Null");
    EXPECT_EQ(NameOf(AddNull(model, L"")), L"Null1");
    const Zelk::ChainRoot chain = AddChain(model, {}, {1, 0, 0}, L"");
    EXPECT_EQ(NameOf(chain), L"Root");
    EXPECT_EQ(NameOf(AddBone(chain, {2, 0, 0}, L"")), L"Bone");
    EXPECT_EQ(NameOf(Zelk::Model(model).AddActionSource(L"")), L"Action");
    EXPECT_EQ(NameOf(AddGroup(model, L"", {})), L"Group");
    EXPECT_EQ(NameOf(AddProperty(model, L"")), L"Property");
}

TEST_F(Names, KeepEveryCharacter) {
    const Zelk::Model model = AddModel(L"走る.take 1");
    EXPECT_EQ(NameOf(model), L"走る.take 1");
    for (const wchar_t* name :
         {L"mixamorig:Hips", L"pelvis.R", L"腰", L" ", L"a\tb", L"..", L"\x1F9B4"})
        EXPECT_EQ(NameOf(AddNull(model, name)), name);
}

struct Rename {
    const wchar_t* from;
    const wchar_t* wanted;
    const wchar_t* given;
};

TEST_F(Names, ArePutByTheSameRule) {
    const Rename kRenames[] = {
        {L"Arm", L"Leg", L"Leg"},      {L"Leg", L"Leg", L"Leg"},
        {L"Leg", L"Hand", L"Hand1"},   {L"Hand1", L"Hand1", L"Hand1"},
        {L"Hand1", L"Hand", L"Hand1"}, {L"Hand1", L"Skel", L"Skel1"},
        {L"Skel1", L"", L"Null"},      {L"Null", L"pelvis.R", L"pelvis.R"},
    };
    const Zelk::Model model = AddModel(L"Skel");
    AddNull(model, L"Hand");
    Zelk::Null null = AddNull(model, L"Arm");
    for (const Rename& rename : kRenames) {
        ASSERT_EQ(NameOf(null), rename.from);
        null.PutName(rename.wanted);
        EXPECT_EQ(NameOf(null), rename.given);
    }
}

TEST_F(Names, ThatWereGivenUpAreFreeAgain) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::Null null = AddNull(model, L"Hand");
    null.PutName(L"Foot");
    EXPECT_EQ(NameOf(AddNull(model, L"Hand")), L"Hand");
    Delete(L"Skel.Foot");
    EXPECT_EQ(NameOf(AddNull(model, L"Foot")), L"Foot");
    Delete(L"Skel");
    EXPECT_EQ(NameOf(AddModel(L"Skel")), L"Skel");
}

TEST_F(Names, OfARenamedModelAreReservedAnew) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    AddModel(L"Body");
    model.PutName(L"Body");
    EXPECT_EQ(NameOf(model), L"Body1");
    EXPECT_EQ(FullNameOf(hips), L"Body1.Hips");
    EXPECT_EQ(NameOf(AddNull(model, L"Skel")), L"Skel");
    EXPECT_EQ(NameOf(AddNull(model, L"Body1")), L"Body11");
    EXPECT_EQ(NameOf(AddModel(L"Skel")), L"Skel");
    model.PutName(L"Hips");
    EXPECT_EQ(NameOf(model), L"Hips1") << "an object of the model has that name";
}

TEST_F(Names, OfActionsGroupsAndPropertiesCanBePut) {
    Zelk::Model model = AddModel(L"Skel");
    Zelk::ActionSource action = model.AddActionSource(L"Walk");
    Zelk::Group group = AddGroup(model, L"Walk", {});
    Zelk::CustomProperty property = AddProperty(model, L"Walk");
    model.AddActionSource(L"Run");
    AddGroup(model, L"Run", {});
    AddProperty(model, L"Run");
    for (ZKObject* item : {static_cast<ZKObject*>(&action), static_cast<ZKObject*>(&group),
                           static_cast<ZKObject*>(&property)}) {
        item->PutName(L"Run");
        EXPECT_EQ(NameOf(*item), L"Run1");
        item->PutName(L"Walk");
        EXPECT_EQ(NameOf(*item), L"Walk");
    }
}

TEST_F(Names, OfParametersAndTheSceneRootStay) {
    const Zelk::Null null = AddNull(AddModel(L"Skel"), L"Hips");
    Zelk::KinematicState local = null.GetKinematics().GetLocal();
    Zelk::Parameter position(local.GetParameters()[0]);
    Zelk::Model root = SceneRoot();
    local.PutName(L"x");
    position.PutName(L"x");
    root.PutName(L"x");
    EXPECT_EQ(NameOf(local), L"local");
    EXPECT_EQ(NameOf(position), L"posx");
    EXPECT_EQ(NameOf(root), L"Scene_Root");
}

TEST_F(Names, AreReservedAnewInAnotherModel) {
    const Zelk::Model first = AddModel(L"A");
    Zelk::Model second = AddModel(L"B");
    const Zelk::Null arm = AddNull(first, L"Arm");
    const Zelk::Null hand = AddNull(arm, L"Hand");
    const Zelk::Null finger = AddNull(hand, L"B");
    AddNull(second, L"Arm");
    AddNull(second, L"Hand");
    ASSERT_TRUE(second.AddChild(Refs({arm})).Succeeded());
    EXPECT_EQ(FullNameOf(arm), L"B.Arm1");
    EXPECT_EQ(FullNameOf(hand), L"B.Hand1");
    EXPECT_EQ(FullNameOf(finger), L"B.B1");
    for (const wchar_t* name : {L"Arm", L"Hand", L"B"})
        EXPECT_EQ(NameOf(AddNull(first, name)), name) << "the old ones are free";
}

TEST_F(Names, OfObjectsThatMoveTogetherDoNotCollide) {
    const Zelk::Model first = AddModel(L"A");
    Zelk::Model second = AddModel(L"B");
    const Zelk::Null hand = AddNull(first, L"Hand");
    const Zelk::Null numbered = AddNull(hand, L"Hand");
    ASSERT_TRUE(second.AddChild(Refs({hand})).Succeeded());
    EXPECT_EQ(NameOf(hand), L"Hand");
    EXPECT_EQ(NameOf(numbered), L"Hand1");
}

TEST_F(Names, OfAModelThatMovesStayIfTheyAreFree) {
    const Zelk::Model outer = AddModel(L"Outer");
    const Zelk::Model inner = AddModel(L"Inner");
    const Zelk::Null hips = AddNull(inner, L"Hips");
    AddNull(outer, L"Hips");
    ASSERT_TRUE(Zelk::Model(outer).AddChild(Refs({inner})).Succeeded());
    EXPECT_EQ(FullNameOf(inner), L"Inner");
    EXPECT_EQ(FullNameOf(hips), L"Inner.Hips");
    EXPECT_EQ(NameOf(AddNull(outer, L"Inner")), L"Inner1");
    ASSERT_TRUE(SceneRoot().AddChild(Refs({inner})).Succeeded());
    Delete(L"Outer.Inner1");
    EXPECT_EQ(NameOf(AddNull(outer, L"Inner")), L"Inner") << "the model took its name along";
}

}  // namespace
