#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Deletion = HostScene;

constexpr std::int32_t kOk = Zelk::status::kOk;

TEST_F(Deletion, AcceptsFullNames) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    const Zelk::Null other = AddNull(AddModel(L"Other"), L"Hips");
    EXPECT_EQ(Delete(L"Skel.Hips"), kOk);
    EXPECT_FALSE(hips.IsValid());
    EXPECT_TRUE(other.IsValid());
    EXPECT_TRUE(model.IsValid());
}

TEST_F(Deletion, PrefersTheLastOfABareName) {
    const Zelk::Null first = AddNull(AddModel(L"A"), L"Hips");
    const Zelk::Null second = AddNull(AddModel(L"B"), L"Hips");
    const Zelk::Null third = AddNull(AddModel(L"C"), L"Hips");
    EXPECT_EQ(Delete(L"Hips"), kOk);
    EXPECT_FALSE(third.IsValid());
    EXPECT_EQ(Delete(L"Hips"), kOk);
    EXPECT_FALSE(second.IsValid());
    EXPECT_TRUE(first.IsValid());
}

TEST_F(Deletion, PrefersAFullNameToABareOne) {
    const Zelk::Null bare = AddNull(SceneRoot(), L"Hips");
    const Zelk::Null last = AddNull(AddModel(L"Skel"), L"Hips");
    EXPECT_EQ(Delete(L"Hips"), kOk) << "which is the full name of an object in no model";
    EXPECT_FALSE(bare.IsValid());
    EXPECT_TRUE(last.IsValid());
}

TEST_F(Deletion, FindsNamesWithDots) {
    const Zelk::Model model = AddModel(L"take.1");
    const Zelk::Null pelvis = AddNull(model, L"pelvis.R");
    const Zelk::Null again = AddNull(model, L"knee.R");
    const Zelk::CustomProperty property = AddProperty(pelvis, L"set.of.two");
    EXPECT_EQ(Delete(L"take.1.pelvis.R.set.of.two"), kOk);
    EXPECT_FALSE(property.IsValid());
    EXPECT_TRUE(pelvis.IsValid());
    EXPECT_EQ(Delete(L"take.1.pelvis.R"), kOk);
    EXPECT_FALSE(pelvis.IsValid());
    EXPECT_EQ(Delete(L"knee.R"), kOk);
    EXPECT_FALSE(again.IsValid());
}

TEST_F(Deletion, PrefersTheLastOfAnAmbiguousFullName) {
    const Zelk::Null first = AddNull(AddModel(L"a"), L"b.c");
    const Zelk::Null second = AddNull(AddModel(L"a.b"), L"c");
    EXPECT_EQ(FullNameOf(first), FullNameOf(second));
    EXPECT_EQ(Delete(L"a.b.c"), kOk);
    EXPECT_FALSE(second.IsValid());
    EXPECT_EQ(Delete(L"a.b.c"), kOk);
    EXPECT_FALSE(first.IsValid());
}

TEST_F(Deletion, LooksAmongPropertiesFirst) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    const Zelk::Null dotted = AddNull(model, L"Hips.Set");
    const Zelk::CustomProperty property = AddProperty(hips, L"Set");
    EXPECT_EQ(Delete(L"Skel.Hips.Set"), kOk);
    EXPECT_FALSE(property.IsValid());
    EXPECT_TRUE(dotted.IsValid());
    EXPECT_EQ(Delete(L"Skel.Hips.Set"), kOk);
    EXPECT_FALSE(dotted.IsValid());
    EXPECT_TRUE(hips.IsValid());
}

TEST_F(Deletion, LooksAmongPropertiesOfThatBareNameToo) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null null = AddNull(model, L"Set");
    const Zelk::CustomProperty first = AddProperty(null, L"Set");
    const Zelk::CustomProperty second = AddProperty(model, L"Set");
    EXPECT_EQ(Delete(L"Set"), kOk);
    EXPECT_FALSE(second.IsValid());
    EXPECT_EQ(Delete(L"Set"), kOk);
    EXPECT_FALSE(first.IsValid());
    EXPECT_TRUE(null.IsValid());
    EXPECT_EQ(Delete(L"Set"), kOk);
    EXPECT_FALSE(null.IsValid());
}

TEST_F(Deletion, FindsPropertiesOfObjectsWithoutAName) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::ChainBone bone = BoneOf(AddChain(model, {}, {1, 0, 0}), 0);
    const Scratch scratch = AddScratch(bone);
    const Zelk::CustomProperty later = AddProperty(AddNull(model, L"Hips"), L"Scratch");
    EXPECT_EQ(FullNameOf(scratch.property), L"Skel..Scratch");
    EXPECT_EQ(Delete(L"Skel..Scratch"), kOk);
    EXPECT_FALSE(scratch.property.IsValid());
    EXPECT_TRUE(later.IsValid());
    EXPECT_TRUE(bone.IsValid());
}

TEST_F(Deletion, OfAPropertyLeavesItsOwner) {
    const Zelk::Null hips = AddNull(AddModel(L"Skel"), L"Hips");
    const Scratch scratch = AddScratch(hips);
    const Zelk::CustomProperty kept = AddProperty(hips, L"Kept");
    EXPECT_EQ(Delete(L"Skel.Hips.Scratch"), kOk);
    for (const Zelk::CBase& handle : {Zelk::CBase(scratch.property), Zelk::CBase(scratch.parameter),
                                      Zelk::CBase(scratch.curve)})
        EXPECT_FALSE(handle.IsValid());
    EXPECT_TRUE(kept.IsValid());
    ASSERT_THAT(RecordOf(hips).Properties(), SizeIs(1));
    EXPECT_EQ(NameOf(AddProperty(hips, L"Scratch")), L"Scratch") << "the name is free";
    EXPECT_FALSE(scratch.property.IsValid()) << "no identity is given out twice";
}

TEST_F(Deletion, IncludesEverythingUnderTheObject) {
    Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    const Zelk::Null stays = AddNull(model, L"Stays");
    const Zelk::Null leg = AddNull(hips, L"Leg");
    const Zelk::ChainRoot chain = AddChain(leg, {}, {1, 0, 0});
    const Zelk::ChainBone bone = AddBone(chain, {2, 0, 0});
    const Zelk::ChainEffector effector = chain.GetEffector();
    const Zelk::Model inner = AddModel(L"Inner", leg);
    const Zelk::Null deep = AddNull(inner, L"Deep");
    const Zelk::ActionSource action = Zelk::Model(inner).AddActionSource(L"Walk");
    const Zelk::Group group = AddGroup(inner, L"All", Refs({deep, stays, hips}));
    const Scratch scratch = AddScratch(deep);
    const Zelk::Kinematics kinematics = leg.GetKinematics();
    const Zelk::Parameter position(kinematics.GetLocal().GetParameters()[0]);
    EXPECT_EQ(Delete(L"Skel.Hips"), kOk);
    const Zelk::CBase kGone[] = {hips,
                                 leg,
                                 chain,
                                 bone,
                                 effector,
                                 inner,
                                 deep,
                                 action,
                                 group,
                                 kinematics,
                                 position,
                                 scratch.property,
                                 scratch.parameter,
                                 scratch.curve,
                                 kinematics.GetLocal()};
    for (const Zelk::CBase& gone : kGone)
        EXPECT_FALSE(gone.IsValid());
    EXPECT_TRUE(stays.IsValid());
    EXPECT_THAT(Scene().Objects(), ElementsAre(&RecordOf(model), &RecordOf(stays)));
    EXPECT_THAT(Scene().Models(), ElementsAre(&RecordOf(model)));
    EXPECT_EQ(RecordOf(stays).groups, nullptr) << "its group is gone";
    EXPECT_EQ(RecordOf(model).firstChild, &RecordOf(stays));
    EXPECT_EQ(RecordOf(model).lastChild, &RecordOf(stays));
}

TEST_F(Deletion, RemovesObjectsFromGroups) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    const Zelk::Null leg = AddNull(hips, L"Leg");
    const Zelk::Null stays = AddNull(model, L"Stays");
    AddGroup(model, L"All", Refs({hips, stays, leg}));
    const Zelk::Group others = AddGroup(AddModel(L"Other"), L"All", Refs({leg}));
    EXPECT_EQ(Delete(L"Hips"), kOk);
    EXPECT_THAT(RecordOf(model).modelData->groups[0]->members,
                ElementsAre(stays.GetRef().Object()));
    EXPECT_THAT(RecordOf(others.GetModel()).modelData->groups[0]->members, IsEmpty());
    EXPECT_TRUE(others.IsValid());
}

TEST_F(Deletion, OfAModelDetachesItsActionsEverywhere) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Model other = AddModel(L"Other");
    AddNull(other, L"Hips");
    const Zelk::ActionSource motion =
        AddAction(model, L"Walk", {{L"Hips.kine.local.posx", {1, 2}, {3, 4}}});
    ASSERT_EQ(Apply(motion, other), kOk);
    ASSERT_EQ(RecordOf(other).modelData->attached, &RecordOf(motion));
    EXPECT_EQ(Delete(L"Skel"), kOk);
    EXPECT_FALSE(motion.IsValid());
    EXPECT_EQ(RecordOf(other).modelData->attached, nullptr);
}

TEST_F(Deletion, OfAModelKeepsAnothersAction) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Model other = AddModel(L"Other");
    const Zelk::ActionSource motion =
        AddAction(model, L"Walk", {{L"Hips.kine.local.posx", {1, 2}, {3, 4}}});
    Apply(motion, other);
    EXPECT_EQ(Delete(L"Other"), kOk);
    EXPECT_TRUE(motion.IsValid());
    EXPECT_EQ(Delete(L"Skel"), kOk);
    EXPECT_THAT(Scene().Objects(), IsEmpty());
}

TEST_F(Deletion, OfSiblingsKeepsTheRestInOrder) {
    const Zelk::Model model = AddModel(L"Skel");
    for (const wchar_t* name : {L"a", L"b", L"c", L"d", L"e"})
        AddNull(model, name);
    for (const wchar_t* name : {L"c", L"a", L"e"})
        EXPECT_EQ(Delete(name), kOk);
    const headless::Object* const first = RecordOf(model).firstChild;
    const headless::Object* const last = RecordOf(model).lastChild;
    EXPECT_EQ(Wide(first->name), L"b");
    EXPECT_EQ(Wide(last->name), L"d");
    EXPECT_EQ(first->nextSibling, last);
    EXPECT_EQ(last->previousSibling, first);
    EXPECT_EQ(first->previousSibling, nullptr);
    EXPECT_EQ(last->nextSibling, nullptr);
}

struct Refused {
    const char* name;
    std::vector<Zelk::CValue> arguments;
};

TEST_F(Deletion, RefusesUnknownNames) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    AddChain(hips, {}, {1, 0, 0});
    Zelk::Model(model).AddActionSource(L"Walk");
    AddGroup(model, L"All", {});
    AddScratch(hips);
    const Refused kRows[] = {
        {"NoArguments", {}},
        {"EmptyValue", {Zelk::CValue()}},
        {"EmptyText", {Zelk::CString()}},
        {"ANumber", {1.0}},
        {"AReference", {hips.GetRef()}},
        {"Unknown", {Zelk::CString(L"Knee")}},
        {"OtherCase", {Zelk::CString(L"hips")}},
        {"ModelOnly", {Zelk::CString(L"Skel.")}},
        {"Dots", {Zelk::CString(L"...")}},
        {"UnknownModel", {Zelk::CString(L"Other.Hips")}},
        {"UnknownObject", {Zelk::CString(L"Skel.Knee")}},
        {"Parameter", {Zelk::CString(L"Skel.Hips.kine.local.posx")}},
        {"Curve", {Zelk::CString(L"Skel.Hips.Scratch.fcurve")}},
        {"Action", {Zelk::CString(L"Skel.Walk")}},
        {"Group", {Zelk::CString(L"Skel.All")}},
        {"SceneRoot", {Zelk::CString(L"Scene_Root")}},
        {"Star", {Zelk::CString(L"Skel.*")}},
    };
    const std::wstring before = SceneText();
    for (const Refused& row : kRows) {
        EXPECT_EQ(Command(L"DeleteObj", row.arguments), Zelk::status::kInvalidArgument) << row.name;
        EXPECT_EQ(SceneText(), before) << row.name;
    }
}

}  // namespace
