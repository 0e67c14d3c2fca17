// Moving objects under other parents.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using testing::ElementsAre;

namespace {

using Reparenting = HostScene;

std::vector<std::wstring> ChildrenOf(const Zelk::CBase& object) {
    std::vector<std::wstring> names;
    for (const headless::Object* child = RecordOf(object).firstChild; child != nullptr;
         child = child->nextSibling)
        names.push_back(Wide(child->name));
    return names;
}

TEST_F(Reparenting, KeepsTheLocalState) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::Null parent = AddNull(model, L"Parent");
    const Zelk::Null null = AddNull(model, L"Null");
    Place(parent, 5, 5, 5);
    Place(null, 1, 2, 3);
    Put(null, L"roty", 40);
    ASSERT_TRUE(parent.AddChild(Refs({null})).Succeeded());
    EXPECT_THAT(RecordOf(null).local, ElementsAre(1, 2, 3, 0, 40, 0));
    EXPECT_EQ(null.GetParent().GetRef(), parent.GetRef());
}

TEST_F(Reparenting, AppendsInTheGivenOrder) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null a = AddNull(model, L"a");
    const Zelk::Null b = AddNull(model, L"b");
    const Zelk::Null c = AddNull(model, L"c");
    EXPECT_TRUE(model.AddChild(Refs({b, a})).Succeeded());
    EXPECT_THAT(ChildrenOf(model), ElementsAre(L"c", L"b", L"a"));
    EXPECT_TRUE(model.AddChild({}).Succeeded());
    EXPECT_TRUE(Zelk::Null(a).AddChild(Refs({c, b, c})).Succeeded());
    EXPECT_THAT(ChildrenOf(model), ElementsAre(L"a"));
    EXPECT_THAT(ChildrenOf(a), ElementsAre(L"b", L"c"));
}

TEST_F(Reparenting, GivesANewModelItsObjects) {
    const Zelk::Model old = AddModel(L"Old");
    const Zelk::Null a = AddNull(old, L"a");
    const Zelk::Null below = AddNull(a, L"below");
    const Zelk::Null b = AddNull(SceneRoot(), L"b");
    const Zelk::Model model = AddModel(L"New", SceneRoot(), Refs({a, b}));
    EXPECT_THAT(ChildrenOf(model), ElementsAre(L"a", L"b"));
    EXPECT_EQ(below.GetModel().GetRef(), model.GetRef());
    EXPECT_EQ(FullNameOf(b), L"New.b");
}

TEST_F(Reparenting, UnderTheSceneRootLeavesTheModel) {
    const Zelk::Null null = AddNull(AddModel(L"Skel"), L"Hips");
    ASSERT_TRUE(SceneRoot().AddChild(Refs({null})).Succeeded());
    EXPECT_EQ(FullNameOf(null), L"Hips");
    EXPECT_FALSE(null.GetParent().IsValid());
    EXPECT_EQ(null.GetModel().GetRef(), SceneRoot().GetRef());
}

TEST_F(Reparenting, RefusesWhatCannotMove) {
    Zelk::Model model = AddModel(L"Skel");
    Zelk::Null top = AddNull(model, L"top");
    Zelk::Null middle = AddNull(top, L"middle");
    Zelk::Null low = AddNull(middle, L"low");
    const Zelk::ChainRoot chain = AddChain(low, {}, {1, 0, 0});
    Zelk::ChainBone second = AddBone(chain, {2, 0, 0});
    Zelk::ChainEffector effector = chain.GetEffector();
    Zelk::Null tip = AddNull(effector, L"tip");
    Zelk::Null gone = AddNull(model, L"gone");
    Delete(L"gone");
    Zelk3DObject root = SceneRoot();
    Zelk3DObject bone = BoneOf(chain, 0);
    Zelk3DObject chainObject(chain.GetRef());
    const Zelk::ActionSource action = model.AddActionSource(L"Walk");
    const struct {
        const char* name;
        Zelk3DObject* parent;
        Zelk::CBase object;
    } kRows[] = {
        {"UnderItself", &top, top},
        {"UnderItsChild", &middle, top},
        {"DeepBelowItself", &low, top},
        {"ABone", &top, second},
        {"TheFirstBone", &top, bone},
        {"AChainUnderItsBone", &second, chain},
        {"AChainUnderItsEffector", &effector, chain},
        {"AChainUnderAChildOfItsEffector", &tip, chain},
        {"WhatHoldsTheChainUnderItsEffector", &effector, top},
        {"AnEffectorUnderItsChild", &tip, effector},
        {"TheModelUnderItsObject", &low, model},
        {"TheSceneRoot", &top, root},
        {"AnAction", &top, action},
        {"APart", &top, top.GetKinematics()},
        {"Nothing", &top, Zelk::CBase()},
        {"WhatIsGone", &top, gone},
        {"UnderWhatIsGone", &gone, top},
    };
    const std::wstring before = SceneText();
    for (const auto& row : kRows) {
        const Zelk::Null good = AddNull(model, L"good");
        EXPECT_FALSE(row.parent->AddChild(Refs({good, row.object})).Succeeded()) << row.name;
        EXPECT_FALSE(AddModel(L"New", *row.parent, Refs({good, row.object})).IsValid()) << row.name;
        Delete(L"good");
        EXPECT_EQ(SceneText(), before) << row.name;
    }
}

TEST_F(Reparenting, RefusesAChainUnderItsEffectorOutsideIt) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::Null far = AddNull(model, L"far");
    const Zelk::ChainRoot chain = AddChain(model, {}, {1, 0, 0});
    Zelk::ChainEffector effector = chain.GetEffector();
    ASSERT_TRUE(far.AddChild(Refs({effector})).Succeeded());
    Zelk::Null tip = AddNull(effector, L"tip");
    EXPECT_FALSE(tip.AddChild(Refs({chain})).Succeeded());
    EXPECT_FALSE(tip.AddChild(Refs({far})).Succeeded());
    EXPECT_TRUE(far.AddChild(Refs({chain})).Succeeded());
}

TEST_F(Reparenting, RefusesTwoChainsUnderEachOthersEffectors) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::ChainRoot first = AddChain(model, {}, {1, 0, 0}, L"first");
    const Zelk::ChainRoot second = AddChain(model, {}, {0, 1, 0}, L"second");
    ASSERT_TRUE(model.AddChild(Refs({first.GetEffector(), second.GetEffector()})).Succeeded());
    EXPECT_TRUE(first.GetEffector().AddChild(Refs({second})).Succeeded());
    EXPECT_FALSE(second.GetEffector().AddChild(Refs({first})).Succeeded());
    const Zelk::Null tip = AddNull(second.GetEffector(), L"tip");
    EXPECT_FALSE(Zelk::Null(tip).AddChild(Refs({first})).Succeeded());
}

TEST_F(Reparenting, LeavesNoTraceOfAModelThatIsRefused) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::Null null = AddNull(model, L"Hips");
    EXPECT_FALSE(AddModel(L"New", null, Refs({null})).IsValid());
    EXPECT_EQ(NameOf(AddModel(L"New")), L"New");
}

}  // namespace
