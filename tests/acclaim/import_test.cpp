// What an ASF file makes in the scene, and what the host sees of the import.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/session.h"
#include "headless/testing.h"
#include "host/status.h"
#include "tests/acclaim/import_failures.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using namespace Zelk::status;
using headless::ObjectType;
using testing::ElementsAre;
using testing::IsEmpty;

std::string ParentName(const std::string& object) {
    return Utf8(ObjectNamed(object).parent->name);
}

std::vector<std::string> GroupMembers() {
    std::vector<std::string> members;
    for (const std::uint32_t id : ModelNamed("skel").modelData->groups.at(0)->members)
        members.push_back(Utf8(headless::Session::Current().GetScene().FindObject(id)->name));
    return members;
}

class SkeletonScene : public testing::Test {
  protected:
    void SetUp() override { StartSession(true); }
    void Import(bool nulls, bool group = true) {
        importer.SetOptions(nulls, true, false, group);
        ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
        EXPECT_FALSE(importer.WasParsing());
        EXPECT_THAT(SceneProblems(true), IsEmpty());
    }

    CAcclaimImport importer;
};

TEST_F(SkeletonScene, HoldsANullForEachNode) {
    Import(true);
    EXPECT_EQ(ParentName("root"), "skel");
    EXPECT_EQ(ParentName("back"), "root");
    EXPECT_EQ(ParentName("arm"), "joint");
    EXPECT_EQ(ParentName("hand_End"), "hand");
    EXPECT_THAT(ObjectNamed("root").local, ElementsAre(1, 2, 3, 0, 0, 0));
    EXPECT_THAT(ObjectNamed("joint").local, ElementsAre(0, 2, 0, 0, 0, 0));
    EXPECT_THAT(ObjectNamed("hand_End").local, ElementsAre(0, 0, 0.5, 0, 0, 0));
}

TEST_F(SkeletonScene, HoldsBonesBetweenDetachedNodes) {
    Import(false);
    EXPECT_EQ(ObjectNamed("root").type, ObjectType::Null);
    EXPECT_EQ(ObjectNamed("back").type, ObjectType::ChainBone);
    EXPECT_EQ(ObjectNamed("back").length, 2.0);
    EXPECT_EQ(ObjectNamed("joint").type, ObjectType::Null);
    EXPECT_EQ(ObjectNamed("arm").type, ObjectType::ChainBone);
    EXPECT_EQ(ObjectNamed("hand").length, 0.5);
}

TEST_F(SkeletonScene, GroupsTheAnimatedObjects) {
    Import(true);
    EXPECT_EQ(Utf8(ModelNamed("skel").modelData->groups.at(0)->name), "skel_Animated_Objects");
    EXPECT_THAT(GroupMembers(), ElementsAre("root", "back", "joint", "arm"));
}

TEST_F(SkeletonScene, GroupsBonesLikeNulls) {
    Import(false);
    EXPECT_THAT(GroupMembers(), ElementsAre("root", "back", "joint", "arm"));
}

TEST_F(SkeletonScene, HasNoGroupUnlessAsked) {
    Import(true, false);
    EXPECT_THAT(ModelNamed("skel").modelData->groups, IsEmpty());
    EXPECT_EQ(BarLines()[BarLines().size() - 2], "value 32000");
}

TEST_F(SkeletonScene, HasABasePoseOfFiveFrames) {
    Import(true);
    EXPECT_EQ(ModelNamed("skel").modelData->actions.size(), 1u);
    EXPECT_EQ(ActionNamed("skel_BasePose").animEnd, 5.0 * 0.03333333333333333);
    EXPECT_EQ(ActionNamed("skel_BasePose").items.size(), 6u * 6u);
}

TEST_F(SkeletonScene, HasBasePosesOfAnimatedLengths) {
    Import(false);
    std::vector<std::string> targets;
    for (const auto& item : ActionNamed("skel_BasePose").items)
        targets.push_back(Utf8(item.Target()));
    EXPECT_THAT(targets, testing::Contains("arm.bone.length"));
    EXPECT_THAT(targets, testing::Not(testing::Contains("back.bone.length")));
}

TEST_F(SkeletonScene, HasTheUniqueNameThatTheHostGivesIt) {
    Import(true);
    CAcclaimImport other;
    other.SetOptions(true, true, false, true);
    ASSERT_EQ(ImportSkeleton(other, kSampleAsf), Outcome());
    const headless::Object& second = ModelNamed("skel1");
    EXPECT_EQ(Utf8(second.modelData->actions.at(0)->name), "skel1_BasePose");
    EXPECT_EQ(Utf8(second.modelData->groups.at(0)->name), "skel1_Animated_Objects");
}

TEST_F(SkeletonScene, ReplacesTheSkeletonThatTheImporterHeld) {
    Import(true);
    ASSERT_EQ(ImportSkeleton(importer, ":version 1\n:root order tx"), Outcome());
    EXPECT_EQ(importer.GetSkeleton().models.size(), 1u);
    EXPECT_TRUE(importer.GetDocumentation().IsEmpty());
    EXPECT_EQ(importer.GetSkeleton().channelCount, 1u);
    EXPECT_EQ(Utf8(importer.GetLastModel().GetName()), "skel1");
}

TEST_F(SkeletonScene, MayBeEmpty) {
    ASSERT_EQ(ImportSkeleton(importer, ":version 1"), Outcome());
    EXPECT_EQ(ModelNamed("skel").firstChild, nullptr);
    EXPECT_THAT(GroupMembers(), IsEmpty());
}

// --- Trees that no file should hold ---

struct OddTree {
    const char* name;
    std::string hierarchy;
};
const OddTree kOddTrees[] = {
    {"Cycle", "root a\na b\nb c\nc a\n"},
    {"SeparateCycle", "root d\na b\nb a\n"},
    {"OwnChild", "root a\na a\n"},
    {"RootBelowABone", "root a\na root\n"},
    {"ChildTwice", "root a\na b b\na b\n"},
    {"ChildOfTwo", "root a b\na c\nb c\n"},
    {"ChildrenFirst", "root d\nc d\nb c\na b\n"},
    {"NothingAttached", ""},
};

class OddTrees : public testing::TestWithParam<std::tuple<OddTree, bool, bool>> {};

TEST_P(OddTrees, LeaveASoundScene) {
    const auto& [tree, nulls, fromParent] = GetParam();
    std::string text = ":version 1\n:root order tx ty tz rx ry rz\n:bonedata\n";
    for (const char* name : {"a", "b", "c", "d"})
        text +=
            std::string("begin name ") + name + "\n direction 1 0 0 length 2\n dof rz rx\n end\n";
    text += ":hierarchy begin\n" + tree.hierarchy + "end\n";
    const std::string motion =
        ":fully-specified\n1\nroot 0 0 0 10 20 30\na 1 2\nb 3 4\nc 5 6\nd 7 8\n";
    StartSession(true);
    CAcclaimImport importer;
    importer.SetOptions(nulls, fromParent, false, true);
    EXPECT_EQ(ImportSkeleton(importer, text), Outcome());
    const Outcome outcome = ImportMotion(importer, motion);
    // In a skeleton of bones, a joint outside every chain has no object that a curve could drive.
    if (outcome.status != 0) {
        EXPECT_FALSE(nulls);
        EXPECT_EQ(outcome.message, "Failed to add channel FCurve");
    }
    EXPECT_THAT(SceneProblems(outcome.status == 0), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, OddTrees,
                         testing::Combine(testing::ValuesIn(kOddTrees), testing::Bool(),
                                          testing::Bool()),
                         [](const auto& row) {
                             return std::string(std::get<0>(row.param).name) +
                                    (std::get<1>(row.param)   ? "Nulls"
                                     : std::get<2>(row.param) ? "BonesFromParent"
                                                              : "Bones") +
                                    (std::get<1>(row.param) && std::get<2>(row.param) ? "2" : "");
                         });

// --- failures outside the parser ---

class RefusedSkeleton : public testing::TestWithParam<RefusedFile> {};

// The file is closed before the message is recorded, so the line is the first.
TEST_P(RefusedSkeleton, IsNotParsed) {
    StartSession(true);
    CAcclaimImport importer;
    const bool isRead = GetParam().status != kFileNotFound;
    EXPECT_EQ(ImportSkeleton(importer, GetParam().text),
              (Outcome{GetParam().status, GetParam().message, isRead ? 1u : 0u}));
    EXPECT_TRUE(BarLines().empty());
}

INSTANTIATE_TEST_SUITE_P(, RefusedSkeleton, testing::ValuesIn(kRefusedSkeletons),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(AcclaimArguments, MustNameASkeletonFileAndAModel) {
    StartSession(true);
    CAcclaimImport importer;
    EXPECT_EQ(Report(importer, importer.ImportSkeleton({}, L"skel").GetCode()),
              (Outcome{kInvalidArgument, "ASF file not specified. Specify a valid file name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportSkeleton(L"a.asf", {}).GetCode()),
              (Outcome{kInvalidArgument,
                       "Container model name not specified. Specify a valid model name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportSkeleton(L"/nowhere/a.asf", L"skel").GetCode()),
              (Outcome{kFileNotFound, "Failed to read ASF file. Specify a valid file name", 0}));
}

TEST(AcclaimArguments, MustNameAMotionFileAndAMotion) {
    StartSession(true);
    CAcclaimImport importer;
    EXPECT_EQ(Report(importer, importer.ImportMotion(L"/nowhere/a.amc", L"motion").GetCode()),
              (Outcome{kInvalidArgument, "Skeleton not defined yet", 0}));
    ASSERT_EQ(ImportSkeleton(importer, kSampleAsf), Outcome());
    EXPECT_EQ(Report(importer, importer.ImportMotion({}, L"motion").GetCode()),
              (Outcome{kInvalidArgument, "AMC file not specified. Specify a valid file name", 0}));
    EXPECT_EQ(
        Report(importer, importer.ImportMotion(L"a.amc", {}).GetCode()),
        (Outcome{kInvalidArgument, "Motion name not specified. Specify a valid motion name", 0}));
    EXPECT_EQ(Report(importer, importer.ImportMotion(L"/nowhere/a.amc", L"motion").GetCode()),
              (Outcome{kFileNotFound, "Failed to read AMC file. Specify a valid file name", 0}));
}

TEST(AcclaimArguments, FailIfTheHostMakesNoModel) {
    StartSession(true);
    headless::FailOperation("AddModel", 1);
    CAcclaimImport importer;
    EXPECT_EQ(ImportSkeleton(importer, kSampleAsf),
              (Outcome{kFail, "Failed to create main model", 0}));
}

}  // namespace
