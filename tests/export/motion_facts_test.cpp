#include "export/motion_facts.h"

#include <gtest/gtest.h>
#include <ostream>
#include <utility>

#include "tests/support/test_scene.h"

namespace {

// A leaf null under a null, and whether it is an end site.
struct Leaf {
    const char* description;
    const wchar_t* parent;
    const wchar_t* leaf;
    bool isDriven;
    bool isEndSite;
};

std::ostream& operator<<(std::ostream& out, const Leaf& row) {
    return out << row.description;
}

std::pair<std::size_t, std::size_t> Counts() {
    const exporters::ModelFacts facts =
        exporters::MeasureModel(TestScene::Get(), *TestScene::Get().Models().front());
    return {facts.joints, facts.endSites};
}

class EndSites : public testing::TestWithParam<Leaf> {};

TEST_P(EndSites, AreCountedApartFromJoints) {
    const Leaf& row = GetParam();
    const TestScene scene;
    const Zelk::Model model = scene.AddModel(L"take");
    const Zelk::Null parent = scene.AddNull(model, row.parent, 0, 0, 0);
    scene.AddNull(parent, row.leaf, 0, 1, 0);
    scene.AddAction(model, L"Base", 0.0, {});
    const std::wstring target = std::wstring(row.isDriven ? row.leaf : row.parent);
    scene.AddAction(model, L"Motion", 1.0,
                    {{(target + L".kine.local.rotx").c_str(), {1, 2}, {0, 1}}});
    EXPECT_EQ(Counts(), row.isEndSite ? std::pair(std::size_t{1}, std::size_t{1})
                                      : std::pair(std::size_t{2}, std::size_t{0}));
}

const Leaf kLeaves[] = {
    {"the name of an end site", L"Hand", L"Hand_End", false, true},
    {"a number after the name", L"Hand", L"Hand_End2", false, true},
    {"a parent that got a number", L"Hand1", L"Hand_End1", false, true},
    {"a parent whose own name has a number", L"Hand1", L"Hand1_End", false, true},
    {"the end site of another joint", L"Hand", L"Foot_End", false, false},
    {"letters after the name", L"Hand", L"Hand_Ends", false, false},
    {"the name of a joint", L"Hand", L"Thumb", false, false},
    {"a driven joint with the name of an end site", L"Hand", L"Hand_End", true, false},
};
INSTANTIATE_TEST_SUITE_P(, EndSites, testing::ValuesIn(kLeaves));

TEST(JointsOfBones, ExcludeTheBoneThatStartsAtTheParent) {
    const TestScene scene;
    const Zelk::Model model = scene.AddModel(L"take");
    const Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 0, 0);
    Zelk::ChainRoot chain = scene.AddChain(hips, L"HipsRoot");
    // The importers name the bone that leads from the parent joint after that joint.
    Zelk::ChainBone(chain.GetBones()[0]).PutName(L"Hips");
    Zelk::ChainBone bone;
    chain.AddBone({0, 3, 0}, Zelk::zkChainBonePin, L"Knee", bone);
    EXPECT_EQ(Counts(), std::pair(std::size_t{2}, std::size_t{1}));
    // A null at the end of the chain continues the skeleton.
    scene.AddNull(chain.GetEffector(), L"Foot", 0, 0, 0);
    EXPECT_EQ(Counts(), std::pair(std::size_t{3}, std::size_t{0}));
}

TEST(JointsOfBones, IncludeTheFirstBoneOfAChainThatStartsAtItsOwnJoint) {
    const TestScene scene;
    const Zelk::Model model = scene.AddModel(L"take");
    const Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 0, 0);
    Zelk::ChainRoot chain = scene.AddChain(hips, L"ThighRoot");
    Zelk::ChainBone bone;
    chain.AddBone({0, 3, 0}, Zelk::zkChainBonePin, L"Knee", bone);
    EXPECT_EQ(Counts(), std::pair(std::size_t{3}, std::size_t{1}));
}

}  // namespace
