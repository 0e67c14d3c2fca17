// The full names, the parents and the models of objects.
#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"

using namespace host_test;

namespace {

class FullNames : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        pelvis = AddNull(hips, L"pelvis.R");
        chain = AddChain(pelvis, {}, {1, 0, 0}, L"ArmRoot");
        bone = AddBone(chain, {2, 0, 0}, L"LeftArm");
        action = model.AddActionSource(L"Skel_Motion");
        group = AddGroup(model, L"Skel_Animated_Objects", Refs({hips}));
        scratch = AddScratch(hips);
    }

    static Zelk::Parameter Local(const Zelk3DObject& object, const wchar_t* name) {
        return Zelk::Parameter(object.GetKinematics().GetLocal().GetParameters().GetItem(name));
    }
    Zelk::Parameter Length() const {
        return Zelk::Parameter(bone.GetParameters().GetItem(L"length"));
    }
    Zelk::Parameter End() const {
        return Zelk::Parameter(action.GetParameters().GetItem(L"AnimEnd"));
    }

    Zelk::Model model;
    Zelk::Null hips;
    Zelk::Null pelvis;
    Zelk::ChainRoot chain;
    Zelk::ChainBone bone;
    Zelk::ActionSource action;
    Zelk::Group group;
    Scratch scratch;
};

TEST_F(FullNames, NameTheModelAndTheObjectAlone) {
    const struct {
        ZKObject object;
        const wchar_t* fullName;
    } kRows[] = {
        {SceneRoot(), L"Scene_Root"},
        {model, L"Skel"},
        {hips, L"Skel.Hips"},
        {pelvis, L"Skel.pelvis.R"},
        {chain, L"Skel.ArmRoot"},
        {bone, L"Skel.LeftArm"},
        {BoneOf(chain, 0), L"Skel."},
        {chain.GetEffector(), L"Skel."},
        {hips.GetKinematics().GetLocal(), L"Skel.Hips.kine.local"},
        {Local(hips, L"posx"), L"Skel.Hips.kine.local.posx"},
        {Local(bone, L"rotx"), L"Skel.LeftArm.kine.local.rotx"},
        {Local(pelvis, L"rotz"), L"Skel.pelvis.R.kine.local.rotz"},
        {Local(model, L"posy"), L"Skel.kine.local.posy"},
        {Length(), L"Skel.LeftArm.bone.length"},
        {action, L"Skel.Skel_Motion"},
        {End(), L"Skel.Skel_Motion.AnimEnd"},
        {group, L"Skel.Skel_Animated_Objects"},
        {scratch.property, L"Skel.Hips.Scratch"},
        {scratch.parameter, L"Skel.Hips.Scratch.fcurve"},
        {AddNull(SceneRoot(), L"Light"), L"Light"},
        {AddModel(L"Inner", hips), L"Inner"},
        {ZKObject(), L""},
        {ZKObject(scratch.curve.GetRef()), L""},
        {ZKObject(hips.GetKinematics().GetRef()), L""},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(FullNameOf(row.object), row.fullName);
}

TEST_F(FullNames, AreTheSameForRecordsAndHandles) {
    for (const ZKObject& item :
         {ZKObject(model.GetRef()), ZKObject(pelvis.GetRef()), ZKObject(action.GetRef()),
          ZKObject(group.GetRef()), ZKObject(scratch.property.GetRef())})
        EXPECT_EQ(Wide(Scene().FullName(item.GetRef().Object())), FullNameOf(item));
    EXPECT_EQ(Wide(Scene().FullName(0)), L"");
    EXPECT_EQ(Wide(Scene().FullName(123'456'789)), L"");
}

TEST_F(FullNames, ComeWithTheRightParents) {
    const struct {
        ZKObject object;
        Zelk::CBase parent;
    } kRows[] = {
        {SceneRoot(), ZKObject()},
        {model, ZKObject()},
        {hips, model},
        {chain, pelvis},
        {BoneOf(chain, 0), chain},
        {bone, BoneOf(chain, 0)},
        {chain.GetEffector(), chain},
        {hips.GetKinematics().GetLocal(), hips},
        {Local(hips, L"roty"), hips.GetKinematics().GetLocal()},
        {Length(), bone},
        {action, model},
        {End(), action},
        {group, model},
        {scratch.property, hips},
        {scratch.parameter, scratch.property},
        {ZKObject(), ZKObject()},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(row.object.GetParent().GetRef(), row.parent.GetRef()) << FullNameOf(row.object);
}

TEST_F(FullNames, ComeWithTheRightModels) {
    const Zelk::Model inner = AddModel(L"Inner", hips);
    const struct {
        Zelk::ProjectItem item;
        Zelk::CBase model;
    } kRows[] = {
        {SceneRoot(), SceneRoot()},
        {model, model},
        {pelvis, model},
        {bone, model},
        {action, model},
        {group, model},
        {scratch.parameter, model},
        {End(), model},
        {inner, inner},
        {AddNull(inner, L"x"), inner},
        {AddNull(SceneRoot(), L"y"), SceneRoot()},
        {Zelk::ProjectItem(), Zelk::Model()},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(row.item.GetModel().GetRef(), row.model.GetRef()) << FullNameOf(row.item);
}

TEST_F(FullNames, ResolveAsTargetsOfTheModel) {
    using headless::Channel;
    const struct {
        const wchar_t* target;
        const Zelk::CBase* object;
        Channel channel;
    } kRows[] = {
        {L"Hips.kine.local.posx", &hips, Channel::PosX},
        {L"pelvis.R.kine.local.rotz", &pelvis, Channel::RotZ},
        {L"LeftArm.bone.length", &bone, Channel::BoneLength},
        {L"kine.local.roty", &model, Channel::RotY},
        {L"Skel.kine.local.roty", &model, Channel::RotY},
        {L"Hips.bone.length", nullptr, {}},
        {L"Hips.kine.local", nullptr, {}},
        {L"Hips.kine.local.sclx", nullptr, {}},
        {L"Hips.Scratch.fcurve", nullptr, {}},
        {L"Nobody.kine.local.posx", nullptr, {}},
        {L".kine.local.posx", nullptr, {}},
        {L"Hipskine.local.posx", nullptr, {}},
        {L"posx", nullptr, {}},
        {L"", nullptr, {}},
    };
    for (const auto& row : kRows) {
        const auto found = Scene().ResolveTarget(RecordOf(model), row.target);
        EXPECT_EQ(found.object, row.object == nullptr ? nullptr : &RecordOf(*row.object))
            << row.target;
        if (row.object == nullptr) continue;
        EXPECT_EQ(found.channel, row.channel) << row.target;
    }
    EXPECT_EQ(Scene().ResolveTarget(RecordOf(hips), L"Hips.kine.local.posx").object, nullptr)
        << "only a model has targets";
}

}  // namespace
