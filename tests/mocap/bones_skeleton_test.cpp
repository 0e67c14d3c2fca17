#include <clocale>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>

#include "headless/testing.h"
#include "tests/mocap/importer.h"
#include "tests/mocap/step_messages.h"

namespace bones_skeleton_test {

using headless::ObjectType;
using mocap_test::ActionOf;
using mocap_test::Importer;
using mocap_test::NameOf;
using mocap_test::ObjectOf;
using mocap_test::Scene;
using support::Lines;
using support::StatusText;
using support::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kBiovision = CMocapImportBase::MOCAP_FORMAT_BIOVISION;
constexpr auto kAcclaim = CMocapImportBase::MOCAP_FORMAT_ACCLAIM;

// One line for each object except the model, in the order of their creation: the type, the name and
// the parent, as in "null Hips < Skel".
Lines Objects() {
    static constexpr const char* kTypes[] = {"model", "null", "root", "bone", "effector"};
    Lines lines;
    for (const headless::Object* object : Scene().Objects()) {
        if (object->type == ObjectType::Model) continue;
        lines.push_back(std::string(kTypes[static_cast<int>(object->type)]) + " " +
                        Utf8(object->name) + " < " + Utf8(object->parent->name));
    }
    return lines;
}

const headless::Object& Named(const std::string& name) {
    for (const headless::Object* object : Scene().Objects())
        if (Utf8(object->name) == name) return *object;
    throw std::runtime_error("no object is called " + name);
}

class BonesSkeleton : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }

    // Builds the skeleton and returns the objects of the scene.
    static Lines Build(Importer& importer) {
        importer.MakeModel();
        EXPECT_EQ(StatusText(importer.CreateBonesSkeleton().GetCode()), "0x00000000")
            << importer.Message();
        return Objects();
    }

    // Detached hips, and below them a leg of two bones and an arm of one, each with an end.
    static void AddFigure(Importer& importer) {
        MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0}, {{kPositionX, {}}});
        MOCAPMODEL& leg = importer.AddNode("Leg", &hips, {1, -1, 0});
        MOCAPMODEL& foot = importer.AddNode("Foot", &leg, {0, -4, 0});
        importer.AddNode("Foot_End", &foot, {0, 0, 2});
        MOCAPMODEL& arm = importer.AddNode("Arm", &hips, {0, 3, 0});
        importer.AddNode("Arm_End", &arm, {5, 0, 0});
    }
};

TEST_F(BonesSkeleton, HasNoObjectsWithoutNodes) {
    Importer importer;
    EXPECT_THAT(Build(importer), IsEmpty());
}

TEST_F(BonesSkeleton, StartsItsChainsAtTheParentsJoint) {
    Importer importer;
    AddFigure(importer);
    EXPECT_THAT(
        Build(importer),
        ElementsAre("null Hips < Skel",
                    // The shorter chain comes first. Its first bone has the name of the joint where
                    // the chain starts.
                    "root HipsRoot < Hips", "bone Hips1 < HipsRoot", "effector HipsEff < HipsRoot",
                    "bone Arm < Hips1", "root HipsRoot1 < Hips", "bone Hips2 < HipsRoot1",
                    "effector HipsEff1 < HipsRoot1", "bone Leg < Hips2", "bone Foot < Leg"));
    EXPECT_THAT(Named("HipsRoot1").local, ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_EQ(Named("Hips1").length, 3.0);
    EXPECT_EQ(Named("Arm").length, 5.0);
    EXPECT_EQ(Named("Hips2").length, std::sqrt(2.0));
    EXPECT_EQ(Named("Leg").length, 4.0);
    EXPECT_EQ(Named("Foot").length, 2.0);
}

TEST_F(BonesSkeleton, StartsThreeChainsAtADetachedRoot) {
    Importer importer;
    AddFigure(importer);
    importer.AddNode("Tail", importer.models[0].get(), {0, 0, -2});
    EXPECT_THAT(
        Build(importer),
        ElementsAre("null Hips < Skel", "root HipsRoot < Hips", "bone Hips1 < HipsRoot",
                    "effector HipsEff < HipsRoot", "root HipsRoot1 < Hips",
                    "bone Hips2 < HipsRoot1", "effector HipsEff1 < HipsRoot1", "bone Arm < Hips2",
                    "root HipsRoot2 < Hips", "bone Hips3 < HipsRoot2",
                    "effector HipsEff2 < HipsRoot2", "bone Leg < Hips3", "bone Foot < Leg"));
}

TEST_F(BonesSkeleton, StartsItsChainsAtTheirOwnJoint) {
    Importer importer;
    importer.chainFromParentJoint = false;
    AddFigure(importer);
    EXPECT_THAT(Build(importer),
                ElementsAre("null Hips < Skel", "root ArmRoot < Hips", "bone Arm < ArmRoot",
                            "effector ArmEff < ArmRoot", "root LegRoot < Hips",
                            "bone Leg < LegRoot", "effector LegEff < LegRoot", "bone Foot < Leg"));
    EXPECT_EQ(Named("LegRoot").local[0], 1.0);
    EXPECT_EQ(Named("LegRoot").local[1], -1.0);
}

TEST_F(BonesSkeleton, GivesEachBoneToTheNodeAtItsStart) {
    Importer importer;
    AddFigure(importer);
    Build(importer);
    EXPECT_EQ(NameOf(importer.models[0]->nullObject), "Hips");
    EXPECT_FALSE(importer.models[0]->bone.IsValid());
    EXPECT_EQ(NameOf(importer.models[1]->bone), "Leg");
    EXPECT_EQ(NameOf(importer.models[2]->bone), "Foot");
    EXPECT_FALSE(importer.models[3]->bone.IsValid());
    EXPECT_FALSE(importer.models[3]->nullObject.IsValid());
    EXPECT_EQ(NameOf(importer.models[4]->bone), "Arm");
}

TEST_F(BonesSkeleton, ReadsTheBasePoseOfEachBone) {
    Importer importer;
    AddFigure(importer);
    Build(importer);
    const MOCAPMODEL& foot = *importer.models[2];
    const headless::Object& bone = ObjectOf(foot.bone);
    for (int i = 3; i < 6; ++i)
        EXPECT_EQ(foot.basePose[i], bone.local[static_cast<std::size_t>(i)]);
    EXPECT_EQ(foot.basePose[6], 0.0);
    Lines targets;
    for (const auto& item : ActionOf(importer.lastBasePose).items)
        targets.push_back(Utf8(item.Target()));
    targets.erase(targets.begin(), targets.begin() + 6);
    targets.resize(12);
    EXPECT_THAT(targets, ElementsAre("HipsRoot.kine.local.posx", "HipsRoot.kine.local.posy",
                                     "HipsRoot.kine.local.posz", "HipsRoot.kine.local.rotx",
                                     "HipsRoot.kine.local.roty", "HipsRoot.kine.local.rotz",
                                     "Hips1.kine.local.rotx", "Hips1.kine.local.roty",
                                     "Hips1.kine.local.rotz", "Arm.kine.local.rotx",
                                     "Arm.kine.local.roty", "Arm.kine.local.rotz"));
}

TEST_F(BonesSkeleton, ReadsTheLengthOfAnAcclaimBoneThatHasAChannelForIt) {
    for (const auto format : {kBiovision, kAcclaim}) {
        support::StartSession(false);
        Importer importer(format);
        MOCAPMODEL& root = importer.AddNode("root", nullptr, {0, 0, 0});
        MOCAPMODEL& thigh = importer.AddNode("thigh", &root, {0, 1, 0}, {{kBoneLength, {}}});
        MOCAPMODEL& shin = importer.AddNode("shin", &thigh, {0, 7, 0});
        importer.AddNode("toe", &shin, {0, 2, 0});
        Build(importer);
        EXPECT_EQ(thigh.basePose[6], format == kAcclaim ? 7.0 : 0.0);
        EXPECT_EQ(shin.basePose[6], 0.0);
    }
}

TEST_F(BonesSkeleton, MakesANullAtTheEffectorOfABranch) {
    Importer importer;
    MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
    MOCAPMODEL& spine = importer.AddNode("Spine", &hips, {0, 4, 0});
    importer.AddNode("L", &spine, {2, 0, 0});
    importer.AddNode("R", &spine, {-2, 0, 0});
    importer.AddNode("Tail", &hips, {0, 0, -1});
    EXPECT_THAT(
        Build(importer),
        ElementsAre("null Hips < Skel", "root HipsRoot < Hips", "bone Hips1 < HipsRoot",
                    "effector HipsEff < HipsRoot", "null Spine < HipsEff", "root HipsRoot1 < Hips",
                    "bone Hips2 < HipsRoot1", "effector HipsEff1 < HipsRoot1",
                    "root SpineRoot < Spine", "bone Spine1 < SpineRoot",
                    "effector SpineEff < SpineRoot", "root SpineRoot1 < Spine",
                    "bone Spine2 < SpineRoot1", "effector SpineEff1 < SpineRoot1"));
    EXPECT_THAT(spine.offset, ElementsAre(0, 0, 0));
    EXPECT_THAT(Named("Spine").local, ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_THAT(spine.globalPosition, ElementsAre(0, 4, 0));
}

TEST_F(BonesSkeleton, MakesANullAtTheEffectorOfADetachedEnd) {
    Importer importer;
    MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
    MOCAPMODEL& leg = importer.AddNode("Leg", &hips, {0, 1, 0});
    MOCAPMODEL& prop = importer.AddNode("Prop", &leg, {0, 2, 0});
    prop.isDetached = true;  // as a position channel does
    EXPECT_THAT(Build(importer), ElementsAre("root HipsRoot < Skel", "bone Hips < HipsRoot",
                                             "effector HipsEff < HipsRoot", "bone Leg < Hips",
                                             "null Prop < HipsEff"));
    EXPECT_THAT(prop.offset, ElementsAre(0, 0, 0));
}

TEST_F(BonesSkeleton, MakesANullOfADetachedNodeAlone) {
    for (const bool fromParent : {true, false}) {
        support::StartSession(false);
        Importer importer;
        importer.chainFromParentJoint = fromParent;
        MOCAPMODEL& a = importer.AddNode("A", nullptr, {0, 0, 0});
        importer.AddNode("B", &a, {0, 0, 0});
        importer.AddNode("C", &a, {0, 0, 0});
        EXPECT_THAT(Build(importer), ElementsAre("null A < Skel", "null B < A", "null C < A"));
    }
}

// A single node is a chain only with the bone that starts at the parent's joint.
TEST_F(BonesSkeleton, MakesNullsOfSingleNodesThatStartAtTheirOwnJoint) {
    Importer importer;
    importer.chainFromParentJoint = false;
    MOCAPMODEL& a = importer.AddNode("A", nullptr, {1, 0, 0});
    importer.AddNode("B", &a, {0, 1, 0});
    importer.AddNode("C", &a, {0, 2, 0});
    EXPECT_THAT(Build(importer), ElementsAre("null A < Skel", "null B < A", "null C < A"));
    EXPECT_THAT(Named("C").local, ElementsAre(0, 2, 0, 0, 0, 0));
}

TEST_F(BonesSkeleton, MakesANullOfASingleRootWithAnOffset) {
    Importer importer;
    importer.AddNode("A", nullptr, {1, 2, 3});
    EXPECT_THAT(Build(importer), ElementsAre("null A < Skel"));
    EXPECT_THAT(Named("A").local, ElementsAre(1, 2, 3, 0, 0, 0));
}

// A root that is not detached is the end of a bone from the model's origin. That bone has the
// model's name.
TEST_F(BonesSkeleton, StartsTheChainOfAnAttachedRootAtTheOrigin) {
    Importer importer;
    MOCAPMODEL& a = importer.AddNode("A", nullptr, {3, 4, 0});
    importer.AddNode("B", &a, {0, 1, 0});
    EXPECT_THAT(Build(importer), ElementsAre("root SkelRoot < Skel", "bone Skel1 < SkelRoot",
                                             "effector SkelEff < SkelRoot", "bone A < Skel1"));
    EXPECT_EQ(Named("Skel1").length, 5.0);
    EXPECT_THAT(Named("SkelRoot").local, ElementsAre(0, 0, 0, 0, 0, 0));
}

TEST_F(BonesSkeleton, GivesAnEndSiteWithoutOffsetANull) {
    Importer importer;
    MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
    MOCAPMODEL& leg = importer.AddNode("Leg", &hips, {0, 1, 0});
    importer.AddNode("Leg_End", &leg, {0, 0, 0}).isEndSite = true;
    EXPECT_THAT(Build(importer), ElementsAre("root HipsRoot < Skel", "bone Hips < HipsRoot",
                                             "effector HipsEff < HipsRoot", "null Leg < HipsEff",
                                             "null Leg_End < Leg"));
}

// If such an end site is counted as a bone nevertheless, a BVH chain stops before it and an Acclaim
// chain includes it.
TEST_F(BonesSkeleton, StopsABvhChainBeforeAnEndSiteWithoutOffset) {
    for (const auto format : {kBiovision, kAcclaim}) {
        support::StartSession(false);
        Importer importer(format);
        MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
        MOCAPMODEL& leg = importer.AddNode("Leg", &hips, {0, 1, 0});
        importer.AddNode("Leg_End", &leg, {0, 0, 0}).isEndSite = true;
        leg.boneChildCount = 1;
        Build(importer);
        EXPECT_EQ(leg.bone.IsValid(), format == kAcclaim);
        EXPECT_EQ(Utf8(Named("Leg_End").parent->name), "HipsEff");
    }
}

TEST_F(BonesSkeleton, PutsEffectorsUnderTheirLastBones) {
    Importer importer;
    importer.effectorToLastBone = true;
    AddFigure(importer);
    Build(importer);
    EXPECT_EQ(Utf8(Named("HipsEff").parent->name), "Arm");
    EXPECT_EQ(Utf8(Named("HipsEff1").parent->name), "Foot");
}

TEST_F(BonesSkeleton, BuildsTheShortestChainOfADepthFirst) {
    Importer importer;
    MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
    MOCAPMODEL& a1 = importer.AddNode("a1", &hips, {1, 0, 0});
    MOCAPMODEL& a2 = importer.AddNode("a2", &a1, {1, 0, 0});
    importer.AddNode("a3", &a2, {1, 0, 0});
    MOCAPMODEL& b1 = importer.AddNode("b1", &hips, {0, 1, 0});
    importer.AddNode("b2", &b1, {0, 1, 0});
    importer.AddNode("c1", &hips, {0, 0, 1});
    Lines bones;
    for (const std::string& line : Build(importer))
        if (line.starts_with("bone")) bones.push_back(line);
    EXPECT_THAT(bones,
                ElementsAre("bone Hips1 < HipsRoot", "bone Hips2 < HipsRoot1", "bone b1 < Hips2",
                            "bone Hips3 < HipsRoot2", "bone a1 < Hips3", "bone a2 < a1"));
}

TEST_F(BonesSkeleton, KeepsWholeNamesThroughEightBitText) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    Importer importer;
    MOCAPMODEL& hips = importer.AddNode("\xE8\x85\xB0.x:y", nullptr, {0, 0, 0});
    importer.AddNode("A", &hips, {1, 0, 0});
    importer.AddNode("B", &hips, {0, 1, 0});
    const Lines objects = Build(importer);
    std::setlocale(LC_CTYPE, "C");
    EXPECT_EQ(objects[1], "root \xE8\x85\xB0.x:yRoot < \xE8\x85\xB0.x:y");
    EXPECT_EQ(objects[2], "bone \xE8\x85\xB0.x:y1 < \xE8\x85\xB0.x:yRoot");
    EXPECT_EQ(objects[3],
              "effector \xE8\x85\xB0.x:y"
              "Eff < \xE8\x85\xB0.x:yRoot");
}

// --- what the host refuses ---

struct RefusedRow {
    const char* operation;
    int call;
    bool effectorToLastBone;
    const char* message;
    const char* status;
    int objects;  // in the scene, with the model
};
std::ostream& operator<<(std::ostream& out, const RefusedRow& row) {
    return out << row.operation << row.call;
}

const RefusedRow kRefusedRows[] = {
    {"AddNull", 1, false, mocap_test::kNoNull, "0x80004005", 1},
    {"Add2DChain", 1, false, mocap_test::kNoChain, "0x80004005", 2},
    {"Add2DChain", 2, false, mocap_test::kNoChain, "0x80004005", 6},
    {"GetBones", 1, false, "", "0x80004005", 5},
    {"AddBone", 1, false, mocap_test::kNoBone, "0x80004005", 5},
    {"AddBone", 3, false, mocap_test::kNoBone, "0x80004005", 10},
    {"AddChild", 1, true, "", "0x80004005", 6},
};

class RefusedBones : public testing::TestWithParam<RefusedRow> {};

TEST_P(RefusedBones, StopTheImportAtOnce) {
    const RefusedRow& row = GetParam();
    support::StartSession(false);
    Importer importer;
    importer.effectorToLastBone = row.effectorToLastBone;
    importer.MakeModel();
    MOCAPMODEL& hips = importer.AddNode("Hips", nullptr, {0, 0, 0});
    MOCAPMODEL& leg = importer.AddNode("Leg", &hips, {1, -1, 0});
    MOCAPMODEL& foot = importer.AddNode("Foot", &leg, {0, -4, 0});
    importer.AddNode("Foot_End", &foot, {0, 0, 2});
    MOCAPMODEL& arm = importer.AddNode("Arm", &hips, {0, 3, 0});
    importer.AddNode("Arm_End", &arm, {5, 0, 0});
    headless::FailOperation(row.operation, static_cast<std::uint64_t>(row.call));
    EXPECT_EQ(StatusText(importer.CreateBonesSkeleton().GetCode()), row.status);
    EXPECT_EQ(importer.Message(), row.message);
    EXPECT_THAT(Scene().Objects(), SizeIs(row.objects));
}

INSTANTIATE_TEST_SUITE_P(, RefusedBones, testing::ValuesIn(kRefusedRows), [](const auto& row) {
    return std::string(row.param.operation) + std::to_string(row.param.call);
});

// If the host gives no bones under which to move the effector, the importer leaves it where it is
// and skips the rest of that chain.
TEST_F(BonesSkeleton, LeavesTheEffectorIfTheHostGivesNoBones) {
    Importer importer;
    importer.effectorToLastBone = true;
    AddFigure(importer);
    importer.MakeModel();
    headless::FailOperation("GetBones", 2);
    EXPECT_EQ(importer.CreateBonesSkeleton().GetCode(), 0);
    EXPECT_EQ(Utf8(Named("HipsEff").parent->name), "HipsRoot");
    EXPECT_EQ(Utf8(Named("HipsEff1").parent->name), "Foot");
}

}  // namespace bones_skeleton_test
