// Which objects of a scene are joints, and how a file's skeleton decides their order and names.
#include "export/clean_skeleton.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "export/skeleton_poses.h"
#include "survey/survey.h"
#include "tests/export/exported.h"
#include "tests/support/files.h"
#include "text/wide_text.h"

namespace clean_skeleton_test {

using exporters::FileSkeleton;
using testing::ElementsAre;
using testing::ElementsAreArray;

// A root with a long branch, two short branches and an end site of its own. In a scene of bones the
// chains are created in another order.
const std::string kFork =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\n"
    "JOINT Spine\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "JOINT Head\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 1 0\n}\n}\n}\n"
    "JOINT Leg\n{\nOFFSET 1 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 -1 0\n}\n}\n"
    "JOINT Leg\n{\nOFFSET -1 0 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "JOINT Tip\n{\nOFFSET 0 -1 0\nCHANNELS 0\n}\n}\n"
    "End Site\n{\nOFFSET 0 0 -1\n}\n}\n"
    "MOTION\nFrames: 1\nFrame Time: 0.1\n0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n";

FileSkeleton SkeletonOf(const std::string& bvh) {
    const survey::BvhSurvey survey = survey::SurveyBvh(bvh, {});
    FileSkeleton skeleton;
    for (const survey::OutlineJoint& joint : survey.outlines.at(0))
        skeleton.push_back({joint.name,
                            joint.parent == survey::OutlineJoint::kNoParent
                                ? exporters::FileJoint::kNoParent
                                : joint.parent,
                            joint.isEndSite});
    return skeleton;
}

std::vector<exporters::Joint> JointsOf(const exporters::Options& options) {
    const headless::Object& model = *exported::CurrentScene().Models().front();
    return exporters::SkeletonPoses(exported::CurrentScene(), model, 0, nullptr, options).Joints();
}

std::vector<std::string> NamesOf(const exporters::Options& options) {
    std::vector<std::string> names;
    for (const exporters::Joint& joint : JointsOf(options))
        names.push_back(text::EncodeUtf8(joint.name) + (joint.isEndSite ? "*" : ""));
    return names;
}

const std::vector<std::string> kForkJoints = {"Hips",     "Spine", "Head", "Head_End*", "Leg",
                                              "Leg_End*", "Leg1",  "Tip",  "Hips_End*"};

struct Row {
    const char* name;
    exported::ImportSettings settings;
};

const Row kScenes[] = {
    {"Nulls", {.nulls = true}},
    {"Bones", {.nulls = false}},
    {"BonesWithEffectorsUnderThem", {.nulls = false, .effectorToLastBone = true}},
};

class CleanSkeleton : public testing::TestWithParam<Row> {};

TEST_P(CleanSkeleton, IsThatOfTheFile) {
    ASSERT_TRUE(exported::ImportText(kFork, GetParam().settings));
    EXPECT_THAT(NamesOf({.skeletons = {SkeletonOf(kFork)}}), ElementsAreArray(kForkJoints));
}

TEST_P(CleanSkeleton, HasTheFilesNamesAsSourceNames) {
    ASSERT_TRUE(exported::ImportText(kFork, GetParam().settings));
    const FileSkeleton skeleton = SkeletonOf(kFork);
    const auto joints = JointsOf({.skeletons = {skeleton}});
    ASSERT_EQ(joints.size(), skeleton.size());
    for (std::size_t joint = 0; joint < joints.size(); ++joint) {
        EXPECT_EQ(text::EncodeUtf8(joints[joint].sourceName), skeleton[joint].name);
        EXPECT_EQ(joints[joint].parent, skeleton[joint].parent);
    }
}

// Skeletons that do not fit the scene. The joints then come from the scene alone.
TEST_P(CleanSkeleton, ComesFromTheSceneIfTheFileDoesNotFit) {
    ASSERT_TRUE(exported::ImportText(kFork, GetParam().settings));
    const std::vector<std::string> alone = NamesOf({});
    FileSkeleton otherName = SkeletonOf(kFork);
    otherName[1].name = "Other";
    FileSkeleton tooShort = SkeletonOf(kFork);
    tooShort.resize(4);
    FileSkeleton tooLong = SkeletonOf(kFork);
    tooLong.push_back({"Tail", 0, false});
    FileSkeleton otherParent = SkeletonOf(kFork);
    otherParent[2].parent = 0;
    for (const FileSkeleton& skeleton : {otherName, tooShort, tooLong, otherParent, FileSkeleton()})
        EXPECT_EQ(NamesOf({.skeletons = {skeleton}}), alone);
    EXPECT_EQ(alone.size(), kForkJoints.size());
}

INSTANTIATE_TEST_SUITE_P(, CleanSkeleton, testing::ValuesIn(kScenes),
                         [](const auto& row) { return row.param.name; });

TEST(CleanSkeletonOf, NamesTheEndsOfChainsIfTheFileIsNotKnown) {
    ASSERT_TRUE(exported::ImportText(kFork, {.nulls = false}));
    EXPECT_THAT(NamesOf({}), testing::IsSupersetOf({"Head_End*", "Leg_End*", "Hips_End*"}));
}

TEST(CleanSkeletonOf, HoldsEveryObjectIfAllNodesAreWanted) {
    ASSERT_TRUE(exported::ImportText(kFork, {.nulls = false}));
    const auto all = NamesOf({.allNodes = true, .skeletons = {SkeletonOf(kFork)}});
    EXPECT_EQ(all.size(), exported::CurrentScene().Objects().size() - 1);  // without the model
    EXPECT_THAT(all, testing::IsSupersetOf({"HipsRoot", "HipsEff*"}));
}

// The first bone of a chain whose root was moved away from the parent joint has a position of its
// own, so it is a joint.
TEST(CleanSkeletonOf, KeepsAHelperThatIsElsewhere) {
    ASSERT_TRUE(exported::ImportText(kFork, {.nulls = false}));
    EXPECT_THAT(NamesOf({}), testing::Not(testing::Contains("Hips1")));
    for (const headless::Object* object : exported::CurrentScene().Objects())
        if (object->name == Zelk::CString(L"HipsRoot"))
            const_cast<headless::Object*>(object)->local[0] = 5.0;
    EXPECT_THAT(NamesOf({}), testing::Contains("Hips1"));
    EXPECT_THAT(NamesOf({}), testing::Not(testing::Contains("HipsRoot")));
}

// Many joints of the same name must not make the search slow.
TEST(CleanSkeletonOf, FindsJointsThatAllHaveOneName) {
    std::string bvh =
        "HIERARCHY\nROOT J\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition "
        "Zposition Zrotation Xrotation Yrotation\n";
    constexpr int kCount = 3000;
    for (int joint = 1; joint < kCount; ++joint)
        bvh += "JOINT J\n{\nOFFSET 0 1 0\nCHANNELS 0\n}\n";
    bvh += "}\nMOTION\nFrames: 1\nFrame Time: 0.1\n0 0 0 0 0 0\n";
    ASSERT_TRUE(exported::ImportText(bvh));
    const auto joints = JointsOf({.skeletons = {SkeletonOf(bvh)}});
    ASSERT_EQ(joints.size(), kCount);
    EXPECT_EQ(joints.back().name, L"J2999");
    EXPECT_EQ(joints.back().sourceName, L"J");
}

}  // namespace clean_skeleton_test
