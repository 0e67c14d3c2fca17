#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "headless/testing.h"
#include "tests/mocap/importer.h"
#include "tests/mocap/step_messages.h"

namespace {

using mocap_test::ActionOf;
using mocap_test::Importer;
using mocap_test::NameOf;
using mocap_test::ObjectOf;
using support::Lines;
using support::StatusText;
using support::Utf8;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class NullsSkeleton : public testing::Test {
  protected:
    void SetUp() override {
        support::StartSession(false);
        importer_.MakeModel();
    }

    Lines Members() {
        Lines members;
        for (const std::uint32_t id :
             ObjectOf(importer_.lastModel).modelData->groups.at(0)->members)
            members.push_back(Utf8(mocap_test::Scene().FindObject(id)->name));
        return members;
    }

    Importer importer_;
};

TEST_F(NullsSkeleton, PutsEachNullUnderItsParents) {
    MOCAPMODEL& hips = importer_.AddNode("Hips", nullptr, {1, 2, 3});
    MOCAPMODEL& leg = importer_.AddNode("Leg", &hips, {0, -4, 0});
    MOCAPMODEL& foot = importer_.AddNode("Foot", &leg, {0, 0, 0});
    MOCAPMODEL& other = importer_.AddNode("Other", nullptr, {5, 0, 0});
    ASSERT_TRUE(importer_.CreateNullsSkeleton().Succeeded());
    EXPECT_EQ(ObjectOf(hips.nullObject).parent, &ObjectOf(importer_.lastModel));
    EXPECT_EQ(ObjectOf(leg.nullObject).parent, &ObjectOf(hips.nullObject));
    EXPECT_EQ(ObjectOf(foot.nullObject).parent, &ObjectOf(leg.nullObject));
    EXPECT_EQ(ObjectOf(other.nullObject).parent, &ObjectOf(importer_.lastModel));
    EXPECT_THAT(ObjectOf(hips.nullObject).local, ElementsAre(1, 2, 3, 0, 0, 0));
    EXPECT_THAT(ObjectOf(leg.nullObject).local, ElementsAre(0, -4, 0, 0, 0, 0));
    EXPECT_THAT(ObjectOf(foot.nullObject).local, ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_THAT(leg.basePose, ElementsAre(0, -4, 0, 0, 0, 0, 0));
    EXPECT_FALSE(leg.bone.IsValid());
}

TEST_F(NullsSkeleton, RecordsItsBasePoseInOrder) {
    importer_.AddNode("A", nullptr, {1, 2, 3});
    ASSERT_TRUE(importer_.CreateNullsSkeleton().Succeeded());
    Lines targets;
    for (const auto& item : ActionOf(importer_.lastBasePose).items)
        targets.push_back(Utf8(item.Target()));
    EXPECT_THAT(targets,
                ElementsAre("A.kine.local.posx", "A.kine.local.posy", "A.kine.local.posz",
                            "A.kine.local.rotx", "A.kine.local.roty", "A.kine.local.rotz"));
}

TEST_F(NullsSkeleton, HasNoObjectsWithoutNodes) {
    EXPECT_EQ(importer_.CreateNullsSkeleton().GetCode(), 0);
    EXPECT_THAT(mocap_test::Scene().Objects(), SizeIs(1));
}

TEST_F(NullsSkeleton, StopsAtANullThatIsNotMade) {
    MOCAPMODEL& first = importer_.AddNode("A", nullptr, {0, 0, 0});
    MOCAPMODEL& second = importer_.AddNode("B", &first, {0, 1, 0});
    importer_.AddNode("C", &second, {0, 1, 0});
    headless::FailOperation("AddNull", 2);
    EXPECT_EQ(StatusText(importer_.CreateNullsSkeleton().GetCode()), "0x80004005");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoNull);
    EXPECT_TRUE(first.nullObject.IsValid());
    EXPECT_FALSE(second.nullObject.IsValid());
    EXPECT_THAT(mocap_test::Scene().Objects(), SizeIs(2));
}

TEST_F(NullsSkeleton, IgnoresABasePoseThatFails) {
    MOCAPMODEL& node = importer_.AddNode("A", nullptr, {1, 2, 3});
    headless::FailOperation("AddSourceItem", 2);
    EXPECT_TRUE(importer_.CreateNullsSkeleton().Succeeded());
    EXPECT_EQ(importer_.Message(), mocap_test::kNoPoseItem);
    EXPECT_THAT(ActionOf(importer_.lastBasePose).items, SizeIs(5));
    EXPECT_THAT(node.basePose, ElementsAre(1, 2, 3, 0, 0, 0, 0));
}

TEST_F(NullsSkeleton, MakesANullOnlyUnderAValidParent) {
    MOCAPMODEL& node = importer_.AddNode("A", nullptr, {1, 2, 3});
    Zelk3DObject nowhere;
    EXPECT_FALSE(importer_.CreateNull(&node, nowhere).Succeeded());
    EXPECT_EQ(importer_.Message(), mocap_test::kNoNull);
    Zelk3DObject model = importer_.lastModel;
    EXPECT_EQ(importer_.CreateNull(&node, model).GetCode(), 0);
    EXPECT_EQ(NameOf(node.nullObject), "A");
}

// --- the group ---

TEST_F(NullsSkeleton, GroupsNodesWithAChannelThatIsImported) {
    importer_.AddNode("None", nullptr, {});
    importer_.AddNode("Ignored", nullptr, {}, {{kIgnoredChannel, {}}, {kIgnoredChannel, {}}});
    importer_.AddNode("Rotation", nullptr, {}, {{kRotationX, {}}});
    importer_.AddNode("Position", nullptr, {}, {{kPositionZ, {}}});
    importer_.AddNode("Length", nullptr, {}, {{kIgnoredChannel, {}}, {kBoneLength, {}}});
    MOCAPMODEL& last = importer_.AddNode("LastSlot", nullptr, {});
    last.channels[6].type = kRotationZ;
    ASSERT_TRUE(importer_.CreateNullsSkeleton().Succeeded());
    ASSERT_TRUE(importer_.CreateGroup().Succeeded());
    EXPECT_THAT(Members(), ElementsAre("Rotation", "Position", "Length", "LastSlot"));
    EXPECT_EQ(Utf8(ObjectOf(importer_.lastModel).modelData->groups[0]->name),
              "Skel_Animated_Objects");
}

TEST_F(NullsSkeleton, GroupsTheBoneOfANodeThatHasBothObjects) {
    MOCAPMODEL& both = importer_.AddNode("Both", nullptr, {}, {{kRotationX, {}}});
    importer_.AddNode("Neither", nullptr, {}, {{kRotationX, {}}});
    Zelk3DObject model = importer_.lastModel;
    ASSERT_TRUE(importer_.CreateNull(&both, model).Succeeded());
    Zelk::ChainRoot chain;
    ASSERT_TRUE(
        model
            .Add2DChain({0, 0, 0}, {0, 1, 0}, {0, 0, 1}, Zelk::zk2DChainNormalAlign, L"Root", chain)
            .Succeeded());
    both.bone = Zelk::ChainBone(chain.GetBones()[0]);
    both.bone.PutName(L"Bone");
    ASSERT_TRUE(importer_.CreateGroup().Succeeded());
    EXPECT_THAT(Members(), ElementsAre("Bone"));
}

TEST_F(NullsSkeleton, MakesAnEmptyGroupWithoutNodes) {
    EXPECT_TRUE(importer_.CreateGroup().Succeeded());
    EXPECT_THAT(Members(), IsEmpty());
}

TEST_F(NullsSkeleton, ReportsThatTheGroupWasNotMade) {
    headless::FailOperation("AddGroup", 1);
    EXPECT_EQ(StatusText(importer_.CreateGroup().GetCode()), "0x80004005");
    EXPECT_EQ(importer_.Message(), mocap_test::kNoGroup);
}

}  // namespace
