// How the tree of nodes is divided into chains, and the order of the chains.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "mocap/bones_skeleton.h"
#include "tests/mocap/importer.h"

namespace {

using mocap_test::Importer;
using testing::ElementsAre;

class BoneChains : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }

    static std::vector<std::string> Chain(MOCAPMODEL& last) {
        std::vector<std::string> names;
        for (const MOCAPMODEL* node : GatherChain(&last))
            names.emplace_back(node->name.get());
        return names;
    }

    Importer importer_;
};

TEST_F(BoneChains, ReachFromTheRootToTheLeaf) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {1, 0, 0});
    MOCAPMODEL& b = importer_.AddNode("b", &a, {1, 0, 0});
    MOCAPMODEL& c = importer_.AddNode("c", &b, {1, 0, 0});
    EXPECT_THAT(Chain(c), ElementsAre("a", "b", "c"));
}

TEST_F(BoneChains, MayConsistOfOneNode) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {1, 0, 0});
    EXPECT_THAT(Chain(a), ElementsAre("a"));
}

TEST_F(BoneChains, BeginBelowABranch) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {1, 0, 0});
    MOCAPMODEL& b = importer_.AddNode("b", &a, {1, 0, 0});
    MOCAPMODEL& c = importer_.AddNode("c", &b, {1, 0, 0});
    importer_.AddNode("d", &a, {0, 1, 0});
    EXPECT_THAT(Chain(c), ElementsAre("b", "c"));
    EXPECT_THAT(Chain(a), ElementsAre("a"));
}

TEST_F(BoneChains, BeginAtADetachedNode) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {1, 0, 0});
    MOCAPMODEL& b = importer_.AddNode("b", &a, {1, 0, 0});
    MOCAPMODEL& c = importer_.AddNode("c", &b, {1, 0, 0});
    // As with a position channel: the node is detached but counted as a bone of its parent.
    b.isDetached = true;
    EXPECT_THAT(Chain(c), ElementsAre("b", "c"));
}

TEST_F(BoneChains, BeginBelowANodeWithoutBones) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {1, 0, 0});
    MOCAPMODEL& b = importer_.AddNode("b", &a, {0, 0, 0});
    EXPECT_THAT(Chain(b), ElementsAre("b"));
    EXPECT_THAT(Chain(a), ElementsAre("a"));
    MOCAPMODEL& c = importer_.AddNode("c", &b, {1, 0, 0});
    EXPECT_THAT(Chain(c), ElementsAre("b", "c"));
}

TEST_F(BoneChains, BeginBelowADetachedNodeWithoutBones) {
    MOCAPMODEL& a = importer_.AddNode("a", nullptr, {0, 0, 0});
    MOCAPMODEL& b = importer_.AddNode("b", &a, {0, 0, 0});
    EXPECT_THAT(Chain(b), ElementsAre("b"));
    EXPECT_THAT(Chain(a), ElementsAre("a"));
}

TEST_F(BoneChains, MayHaveAHundredThousandNodes) {
    MOCAPMODEL* node = nullptr;
    for (int i = 0; i < 100'000; ++i)
        node = &importer_.AddNode("n", node, {0, 1, 0});
    EXPECT_EQ(GatherChain(node).size(), 100'000u);
    EXPECT_EQ(GatherChain(node).back(), node);
}

// --- the order ---

int Compare(unsigned depthA, std::size_t lengthA, unsigned depthB, std::size_t lengthB) {
    MOCAPMODEL firstA, firstB;
    firstA.depth = depthA;
    firstB.depth = depthB;
    const BoneChain a(lengthA, &firstA);
    const BoneChain b(lengthB, &firstB);
    const BoneChain* const elements[] = {&a, &b};
    return ChainsCompare(&elements[0], &elements[1]);
}

TEST_F(BoneChains, AreOrderedByDepthThenLength) {
    EXPECT_EQ(Compare(2, 1, 1, 9), 1);
    EXPECT_EQ(Compare(1, 9, 2, 1), -1);
    EXPECT_EQ(Compare(3, 2, 3, 1), 1);
    EXPECT_EQ(Compare(3, 1, 3, 2), -1);
    EXPECT_EQ(Compare(3, 2, 3, 2), 0);
    // Depths are unsigned and must not be subtracted.
    EXPECT_EQ(Compare(0, 1, 0xFFFFFFFF, 1), -1);
    EXPECT_EQ(Compare(0xFFFFFFFF, 1, 0, 1), 1);
}

}  // namespace
