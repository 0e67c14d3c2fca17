#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Parameters : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        chain = AddChain(hips, {}, {3, 0, 0});
        bone = AddBone(chain, {3, 4, 0}, L"Arm");
    }

    Zelk::Model model;
    Zelk::Null hips;
    Zelk::ChainRoot chain;
    Zelk::ChainBone bone;
};

std::vector<std::wstring> NamesIn(const Zelk::CRefArray& array) {
    std::vector<std::wstring> names;
    for (std::uint32_t index = 0; index < array.GetCount(); ++index)
        names.push_back(NameOf(ZKObject(array[index])));
    return names;
}

TEST_F(Parameters, AreListedByWhatHasThem) {
    EXPECT_THAT(NamesIn(hips.GetKinematics().GetLocal().GetParameters()),
                ElementsAre(L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz"));
    EXPECT_THAT(NamesIn(bone.GetParameters()), ElementsAre(L"length"));
    EXPECT_THAT(NamesIn(model.AddActionSource(L"Walk").GetParameters()), ElementsAre(L"AnimEnd"));
    EXPECT_THAT(NamesIn(AddScratch(hips).property.GetParameters()), ElementsAre(L"fcurve"));
    EXPECT_THAT(NamesIn(hips.GetParameters()), IsEmpty());
    EXPECT_THAT(NamesIn(chain.GetParameters()), IsEmpty());
    EXPECT_THAT(NamesIn(model.GetParameters()), IsEmpty());
}

TEST_F(Parameters, AreFoundByName) {
    const Zelk::CRefArray local = hips.GetKinematics().GetLocal().GetParameters();
    EXPECT_EQ(local.GetItem(L"posz"), local[2]);
    EXPECT_EQ(local.GetItem(L"POSZ"), Zelk::CRef());
    EXPECT_EQ(local.GetItem(L""), Zelk::CRef());
    EXPECT_EQ(local.GetItem(L"length"), Zelk::CRef());
    const Zelk::CRefArray mixed = Refs({Zelk::CBase(), model, hips, Zelk::Null()});
    EXPECT_EQ(mixed.GetItem(L"Hips"), hips.GetRef());
    EXPECT_EQ(mixed.GetItem(L""), Zelk::CRef()) << "an empty reference has no name";
}

TEST_F(Parameters, GiveBackWhatWasPut) {
    const double kValues[] = {1.5, -0.0, 720.25, 1e300, std::numeric_limits<double>::infinity()};
    for (const wchar_t* name : {L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz"})
        for (const double value : kValues) {
            EXPECT_TRUE(Put(hips, name, value).Succeeded());
            EXPECT_EQ(Get(hips, name), value);
            const Zelk::Parameter alone(
                hips.GetKinematics().GetLocal().GetParameters().GetItem(name));
            EXPECT_EQ(alone.GetValue(Zelk::kCurrentTime).AsDouble(), value);
            EXPECT_EQ(alone.GetValue(17.0).AsDouble(), value) << "nothing plays";
        }
}

TEST_F(Parameters, CanBePutThroughThemselves) {
    Zelk::Parameter rotation(hips.GetKinematics().GetLocal().GetParameters().GetItem(L"rotx"));
    EXPECT_TRUE(rotation.PutParameterValue(L"rotx", 30.0, Zelk::kCurrentTime).Succeeded());
    EXPECT_EQ(Get(hips, L"rotx"), 30.0);
    EXPECT_EQ(rotation.PutParameterValue(L"roty", 30.0, Zelk::kCurrentTime).GetCode(),
              Zelk::status::kInvalidArgument);
    EXPECT_EQ(rotation.GetParameterValue(L"rotx", 0.0).AsDouble(), 30.0);
    EXPECT_EQ(rotation.GetParameterValue(L"roty", 0.0).GetType(), Zelk::CValue::Type::Empty);
}

TEST_F(Parameters, OfAnActionAreItsEnd) {
    Zelk::ActionSource action = model.AddActionSource(L"Walk");
    EXPECT_EQ(RecordOf(action).animEnd, 0.0);
    EXPECT_TRUE(action.PutParameterValue(L"AnimEnd", 2.5, Zelk::kCurrentTime).Succeeded());
    EXPECT_EQ(RecordOf(action).animEnd, 2.5);
    const Zelk::Parameter end(action.GetParameters()[0]);
    EXPECT_EQ(end.GetValue(Zelk::kCurrentTime).AsDouble(), 2.5);
    EXPECT_EQ(action.PutParameterValue(L"AnimStart", 1.0, 0.0).GetCode(),
              Zelk::status::kInvalidArgument);
}

TEST_F(Parameters, ThatAreUnknownOrComputedAreRefused) {
    const std::wstring before = SceneText();
    const Zelk::ChainEffector effector = chain.GetEffector();
    for (const wchar_t* name : {L"", L"sclx", L"local", L"posx ", L"length", L"bone.length"})
        EXPECT_FALSE(Put(hips, name, 1.0).Succeeded()) << name;
    for (const wchar_t* name : {L"posx", L"posy", L"posz"})
        EXPECT_FALSE(Put(bone, name, 1.0).Succeeded()) << name;
    for (const wchar_t* name : {L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz"})
        EXPECT_FALSE(Put(effector, name, 1.0).Succeeded()) << name;
    EXPECT_FALSE(Place(bone, 1, 2, 3).Succeeded());
    EXPECT_FALSE(Place(BoneOf(chain, 0), 1, 2, 3).Succeeded());
    EXPECT_FALSE(Place(effector, 1, 2, 3).Succeeded());
    EXPECT_EQ(SceneText(), before);
}

TEST_F(Parameters, OfATransformAreATranslationWithoutRotation) {
    Put(hips, L"rotx", 40.0);
    EXPECT_TRUE(Place(hips, 1.0, 2.0, 3.0).Succeeded());
    EXPECT_THAT(RecordOf(hips).local, ElementsAre(1, 2, 3, 0, 0, 0));
    EXPECT_TRUE(Place(chain, 4.0, 5.0, 6.0).Succeeded());
    EXPECT_THAT(RecordOf(chain).local, ElementsAre(4, 5, 6, 0, 0, 0));
    EXPECT_TRUE(Place(model, 7.0, 8.0, 9.0).Succeeded());
    EXPECT_THAT(RecordOf(model).local, ElementsAre(7, 8, 9, 0, 0, 0));
}

TEST_F(Parameters, OfAPropertyAreReferencesToCurvesOfTheirOwn) {
    Zelk::CustomProperty property = AddProperty(hips, L"Set");
    Zelk::Parameter first;
    Zelk::Parameter second;
    ASSERT_TRUE(property.AddFCurveParameter(L"a", first).Succeeded());
    ASSERT_TRUE(property.AddFCurveParameter(L"b", second).Succeeded());
    const Zelk::CValue value = first.GetValue(Zelk::kCurrentTime);
    EXPECT_EQ(value.GetType(), Zelk::CValue::Type::Reference);
    EXPECT_NE(value.AsRef(), second.GetValue(Zelk::kCurrentTime).AsRef());
    EXPECT_TRUE(SetKeys(Zelk::FCurve(value.AsRef()), {1}, {2}).Succeeded());
    EXPECT_EQ(RecordOf(hips).Properties()[0]->curves[0].curve.keys.Count(), 1u);
    EXPECT_EQ(RecordOf(hips).Properties()[0]->curves[1].curve.keys.Count(), 0u);
    EXPECT_EQ(property.GetParameters().GetItem(L"b"), second.GetRef());

    Zelk::Parameter third;
    EXPECT_FALSE(property.AddFCurveParameter(L"b", third).Succeeded());
    EXPECT_FALSE(property.AddFCurveParameter(L"", third).Succeeded());
    EXPECT_FALSE(third.IsValid());
    EXPECT_EQ(property.GetParameters().GetCount(), 2u);
}

TEST_F(Parameters, OfTheSceneRootDoNotExist) {
    EXPECT_FALSE(SceneRoot().GetKinematics().IsValid());
    EXPECT_EQ(SceneRoot().GetParameters().GetCount(), 0u);
    EXPECT_FALSE(SceneRoot().PutParameterValue(L"posx", 1.0, 0.0).Succeeded());
    Zelk::CustomProperty property;
    EXPECT_FALSE(SceneRoot().AddCustomProperty(L"x", false, property).Succeeded());
}

}  // namespace
