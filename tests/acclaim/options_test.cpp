// What each option makes of a skeleton, and unusual names of bones.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include "headless/session.h"
#include "tests/support/acclaim/acclaim_texts.h"
#include "tests/support/core/scene_check.h"
#include "tests/support/core/session_text.h"

namespace {

using namespace support;
using headless::ObjectType;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Names = std::vector<std::string>;

Names NamesOf(ObjectType type) {
    Names names;
    for (const headless::Object* object : headless::Session::Current().GetScene().Objects())
        if (object->type == type) names.push_back(Utf8(object->name));
    return names;
}

// A spine with two arms, of which one has a hand.
const std::string kFork =
    ":version 1.10\n:root order tx ty tz rx ry rz\n:bonedata\n"
    "begin name spine direction 0 1 0 length 4 dof rx\nend\n"
    "begin name larm direction 1 0 0 length 3 dof rx\nend\n"
    "begin name lhand direction 1 0 0 length 1 dof rx\nend\n"
    "begin name rarm direction -1 0 0 length 3 dof rx\nend\n"
    ":hierarchy begin\nroot spine\nspine larm rarm\nlarm lhand\nend\n";

struct SkeletonRow {
    const char* name;
    bool nulls;
    bool chainFromParent;
    bool effectorToLastBone;
    Names nullNames;
    Names rootNames;
    Names boneNames;
    Names effectorNames;
    Names effectorParents;
};
std::ostream& operator<<(std::ostream& out, const SkeletonRow& row) {
    return out << row.name;
}

const SkeletonRow kSkeletons[] = {
    {"Nulls",
     true,
     true,
     false,
     {"root", "spine", "larm", "lhand", "rarm", "lhand_End", "rarm_End"},
     {},
     {},
     {},
     {}},
    // Each arm is a chain that starts where the spine does, so its first bone is the spine.
    {"BonesFromTheParentsJoint",
     false,
     true,
     false,
     {"root", "spine"},
     {"spineRoot", "spineRoot1"},
     {"spine1", "rarm", "spine2", "larm", "lhand"},
     {"spineEff", "spineEff1"},
     {"spineRoot", "spineRoot1"}},
    {"BonesFromTheirOwnJoint",
     false,
     false,
     false,
     {"root", "spine"},
     {"rarmRoot", "larmRoot"},
     {"rarm", "larm", "lhand"},
     {"rarmEff", "larmEff"},
     {"rarmRoot", "larmRoot"}},
    {"EffectorsUnderTheLastBone",
     false,
     true,
     true,
     {"root", "spine"},
     {"spineRoot", "spineRoot1"},
     {"spine1", "rarm", "spine2", "larm", "lhand"},
     {"spineEff", "spineEff1"},
     {"rarm", "lhand"}},
};

class AcclaimOptions : public testing::TestWithParam<SkeletonRow> {};

TEST_P(AcclaimOptions, DecideWhichObjectsTheSkeletonHas) {
    StartSession(false);
    const SkeletonRow& row = GetParam();
    CAcclaimImport importer;
    importer.SetOptions(row.nulls, row.chainFromParent, row.effectorToLastBone, true);
    ASSERT_EQ(ImportSkeleton(importer, kFork), Outcome());
    EXPECT_THAT(NamesOf(ObjectType::Null), ElementsAreArray(row.nullNames));
    EXPECT_THAT(NamesOf(ObjectType::ChainRoot), ElementsAreArray(row.rootNames));
    EXPECT_THAT(NamesOf(ObjectType::ChainBone), ElementsAreArray(row.boneNames));
    EXPECT_THAT(NamesOf(ObjectType::ChainEffector), ElementsAreArray(row.effectorNames));
    Names parents;
    for (const std::string& name : row.effectorNames)
        parents.push_back(Utf8(ObjectNamed(name).parent->name));
    EXPECT_THAT(parents, ElementsAreArray(row.effectorParents));
    EXPECT_THAT(SceneProblems(true), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(, AcclaimOptions, testing::ValuesIn(kSkeletons),
                         [](const auto& row) { return std::string(row.param.name); });

// --- names ---

struct OddName {
    const char* name;
    std::string text;
};
const OddName kOddNames[] = {
    {"Long", std::string(10000, 'n')},
    {"Latin1",
     "Br\xFC"
     "cke"},
    {"Utf8",
     "Br\xC3\xBC"
     "cke"},
    {"InvalidUtf8", "\xFF\xFE\xC3"},
    {"LikeTheModel", "skel"},
    {"LikeAKeyword", "begin"},
    {"Dotted", "arm.L:2"},
};

class OddNames : public testing::TestWithParam<OddName> {};

TEST_P(OddNames, AreImported) {
    for (const bool nulls : {true, false}) {
        StartSession(true);
        CAcclaimImport importer;
        importer.SetOptions(nulls, true, false, true);
        const std::string& name = GetParam().text;
        EXPECT_EQ(ImportSkeleton(importer, ":version 1\n:name " + name +
                                               "\n:root order tx\n:bonedata begin name " + name +
                                               "\n direction 1 0 0 length 2\n dof rx\n end\n"
                                               ":hierarchy begin\n root " +
                                               name + "\n end"),
                  Outcome());
        EXPECT_EQ(ImportMotion(importer, ":fully-specified\n1\nroot 1\n" + name + " 5\n"),
                  Outcome());
        EXPECT_EQ(MotionCurves().size(), 4u);
        EXPECT_THAT(SceneProblems(true), IsEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(, OddNames, testing::ValuesIn(kOddNames),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
