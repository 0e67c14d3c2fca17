// What each option makes of a skeleton, unusual names of joints, and a locale with a decimal comma.
#include <clocale>
#include <cstdlib>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/comma_locale.h"
#include "tests/support/core/scene_check.h"

namespace {

using bvh_test::Find;
using bvh_test::Importer;
using bvh_test::Scene;
using headless::Object;
using headless::ObjectType;
using support::Lines;
using support::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;

class BvhOptions : public testing::Test {
  protected:
    void SetUp() override {
        support::StartSession(false);
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
    void TearDown() override { std::setlocale(LC_CTYPE, "C"); }

    static Lines NamesOf(ObjectType type) {
        Lines names;
        for (const Object* object : Scene().Objects())
            if (object->type == type) names.push_back(Utf8(object->name));
        return names;
    }
};

TEST_F(BvhOptions, NullsAreMadeForAllJoints) {
    Importer importer({true});
    ASSERT_EQ(importer.Import(bvh_test::kTree), 0);
    EXPECT_THAT(NamesOf(ObjectType::Null), ElementsAre("Hips", "Spine", "Head", "Head_End", "Arm",
                                                       "Hand", "Finger", "Finger_End", "Prop"));
    EXPECT_THAT(NamesOf(ObjectType::ChainRoot), IsEmpty());
}

TEST_F(BvhOptions, BonesStartAtTheParentsJoint) {
    Importer importer({false, true});
    ASSERT_EQ(importer.Import(bvh_test::kTree), 0);
    // Detached joints and joints that branch become nulls. A chain has the name of the joint where
    // it starts.
    EXPECT_THAT(NamesOf(ObjectType::Null),
                ElementsAre("Hips", "Spine", "Prop", "Head", "Head_End"));
    EXPECT_THAT(NamesOf(ObjectType::ChainRoot), ElementsAre("HipsRoot", "SpineRoot", "SpineRoot1"));
    EXPECT_THAT(NamesOf(ObjectType::ChainBone),
                ElementsAre("Hips1", "Spine1", "Spine2", "Arm", "Hand", "Finger"));
    EXPECT_THAT(NamesOf(ObjectType::ChainEffector),
                ElementsAre("HipsEff", "SpineEff", "SpineEff1"));
}

TEST_F(BvhOptions, BonesStartAtTheirOwnJoint) {
    Importer importer({false, false});
    ASSERT_EQ(importer.Import(bvh_test::kTree), 0);
    EXPECT_THAT(NamesOf(ObjectType::Null),
                ElementsAre("Hips", "Spine", "Prop", "Head", "Head_End"));
    EXPECT_THAT(NamesOf(ObjectType::ChainRoot), ElementsAre("ArmRoot"));
    EXPECT_THAT(NamesOf(ObjectType::ChainBone), ElementsAre("Arm", "Hand", "Finger"));
}

TEST_F(BvhOptions, EffectorsAreUnderTheParentThatTheOptionSays) {
    for (const bool toLastBone : {false, true}) {
        support::StartSession(false);
        Importer importer({false, true, toLastBone});
        ASSERT_EQ(importer.Import(bvh_test::kTree), 0);
        const Object& model = *Scene().Models()[0];
        EXPECT_EQ(Utf8(Find(model, "SpineEff1")->parent->name),
                  toLastBone ? "Finger" : "SpineRoot1");
        EXPECT_EQ(Utf8(Find(model, "Spine")->parent->name), "HipsEff");
    }
}

// A joint with rotations but without children has no object in a skeleton of bones.
TEST_F(BvhOptions, BonesNeedAChildOfEachAnimatedJoint) {
    const std::string text =
        "HIERARCHY ROOT A { OFFSET 0 0 0 JOINT B { OFFSET 0 1 0 CHANNELS 1 Xrotation } } "
        "MOTION Frames: 1 Frame Time: 1 5";
    Importer nulls({true});
    EXPECT_EQ(nulls.Import(text), 0);
    support::StartSession(false);
    Importer bones({false});
    EXPECT_EQ(support::StatusText(bones.Import(text)), "0x80020003");
    EXPECT_EQ(bones.Message(), "Failed to add channel FCurve");
    EXPECT_FALSE(bones.WasParsing());
}

// --- names and numbers ---

TEST_F(BvhOptions, NamesAreImportedWhole) {
    const std::string longName(10'000, 'n');
    const std::vector<std::string> names = {
        "mixamorig:Hips", "pelvis.R", "\xE5\x8F\xB3\xE8\x85\x95",
        longName,         "a\"b\\c",  "kine.local.posx"};
    for (const std::string& name : names) {
        for (const bool nulls : {true, false}) {
            support::StartSession(false);
            Importer importer({nulls});
            ASSERT_EQ(importer.Import(
                          "HIERARCHY ROOT " + name +
                          " { OFFSET 0 0 0 CHANNELS 1 Xrotation End Site { OFFSET 0 1 0 } } MOTION "
                          "Frames: 1 Frame Time: 1 5"),
                      0);
            const Object& model = *Scene().Models()[0];
            ASSERT_NE(Find(model, name), nullptr) << name.substr(0, 20);
            EXPECT_EQ(Utf8(model.modelData->actions[1]->items[0].Target()),
                      name + ".kine.local.rotx");
            EXPECT_THAT(support::SceneProblems(true), IsEmpty());
        }
    }
}

TEST_F(BvhOptions, NamesEndAtTheirFirstInvalidByte) {
    Importer importer({true});
    ASSERT_EQ(importer.Import("HIERARCHY ROOT ab\xFF"
                              "cd { OFFSET 0 0 0 JOINT \x80 { OFFSET 0 1 0 } }"),
              0);
    EXPECT_NE(Find(*Scene().Models()[0], "ab"), nullptr);
    EXPECT_THAT(support::SceneProblems(true), IsEmpty());
}

TEST_F(BvhOptions, NamesOfJointsAreMadeUnique) {
    Importer importer({true});
    ASSERT_EQ(
        importer.Import(
            "HIERARCHY ROOT walk { OFFSET 0 0 0 JOINT A { OFFSET 0 1 0 JOINT A { OFFSET 0 1 0 "
            "JOINT A1 { OFFSET 0 1 0 } } } }"),
        0);
    EXPECT_THAT(NamesOf(ObjectType::Null), ElementsAre("walk1", "A", "A1", "A11"));
}

TEST_F(BvhOptions, NumbersDoNotDependOnTheDecimalComma) {
    std::vector<std::vector<double>> values;
    const auto import = [&values] {
        support::StartSession(false);
        Importer importer({false});
        ASSERT_EQ(importer.Import(bvh_test::kTree), 0);
        values.emplace_back();
        for (const auto& action : Scene().Models()[0]->modelData->actions) {
            values.back().push_back(action->animEnd);
            for (const auto& item : action->items) {
                values.back().push_back(item.Value());
                if (item.IsCurve()) values.back().push_back(item.GetCurve().keys.values->front());
            }
        }
    };
    import();
    const support::CommaLocale comma;
    ASSERT_EQ(comma.Problem(), "");
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5) << "the locale has no decimal comma";
    import();
    EXPECT_EQ(values[0], values[1]);
}

}  // namespace
