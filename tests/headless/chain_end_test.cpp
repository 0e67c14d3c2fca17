#include "headless/chain_end.h"

#include <cstring>
#include <gtest/gtest.h>

#include "headless/evaluation.h"
#include "tests/headless/host_scene.h"

using namespace host_test;
using headless::EndOfChain;
using headless::Transform;

namespace {

class ChainEnd : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        chain = AddChain(model, {0, 0, 0}, {2, 0, 0}, L"Arm");
        hand = AddBone(chain, {2, 3, 1}, L"Hand");
        effector = chain.GetEffector();
    }
    const headless::Object& Effector() const { return RecordOf(effector); }

    Zelk::Model model;
    Zelk::ChainRoot chain;
    Zelk::ChainBone hand;
    Zelk::ChainEffector effector;
};

TEST_F(ChainEnd, IsTheLastBone) {
    EXPECT_EQ(EndOfChain(Effector()), &RecordOf(hand));
    model.AddChild(Refs({effector}));
    EXPECT_EQ(EndOfChain(Effector()), &RecordOf(hand)) << "under any parent";
    EXPECT_EQ(EndOfChain(RecordOf(hand)), nullptr) << "a bone is no effector";
    EXPECT_EQ(EndOfChain(RecordOf(model)), nullptr);
}

TEST_F(ChainEnd, IsTheRootOfAChainWithoutBones) {
    Zelk3DObject first = BoneOf(chain, 0);
    first.PutName(L"First");
    Delete(L"Skel.First");
    ASSERT_EQ(chain.GetBones().GetCount(), 0u);
    EXPECT_EQ(EndOfChain(Effector()), &RecordOf(chain));
    EXPECT_EQ(EndOfChain(Effector())->length, 0.0);
}

TEST_F(ChainEnd, IsNothingWithoutTheChain) {
    model.AddChild(Refs({effector}));
    Delete(L"Skel.Arm");
    ASSERT_TRUE(effector.IsValid());
    EXPECT_EQ(EndOfChain(Effector()), nullptr);
}

TEST_F(ChainEnd, SeesTheEffectorAsEvaluationDoes) {
    AddNull(hand, L"Palm");
    const headless::MotionEvaluator evaluator(Scene(), RecordOf(model), nullptr);
    std::vector<Transform> globals(evaluator.Objects().size());
    evaluator.Evaluate(0.0, globals);
    const auto globalOf = [&](const headless::Object* object) {
        std::size_t index = 0;
        while (evaluator.Objects().at(index) != object)
            ++index;
        return globals[index];
    };
    const Transform seen = headless::EffectorSeenFromEnd(Effector(), RecordOf(hand).length);
    EXPECT_EQ(seen.origin[0], RecordOf(hand).length);
    EXPECT_EQ(seen.origin[1], 0.0);
    EXPECT_EQ(seen.origin[2], 0.0);
    const Transform expected = seen * globalOf(&RecordOf(hand));
    const Transform actual = globalOf(&Effector());
    EXPECT_EQ(std::memcmp(&expected, &actual, sizeof expected), 0) << "bit for bit";
}

}  // namespace
