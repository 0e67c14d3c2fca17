#include "headless/evaluation.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <random>

#include "tests/headless/host_scene.h"
#include "tests/headless/matrix_walk.h"

using namespace host_test;
using headless::MotionEvaluator;
using headless::Transform;
using testing::ElementsAre;

namespace evaluation_test {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// The rounding error of some tens of products of numbers up to 100.
constexpr double kExact = 1e-12;

class Evaluation : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        Place(hips, 1, 2, 3);
    }

    std::vector<Transform> At(const Zelk::ActionSource& motion, double frame) const {
        const MotionEvaluator evaluator(Scene(), RecordOf(model), &RecordOf(motion));
        std::vector<Transform> globals(evaluator.Objects().size());
        evaluator.Evaluate(frame, globals);
        return globals;
    }
    // The global x of "Hips", which is the second object.
    double HipsX(const std::vector<Item>& items, double frame) {
        return At(AddAction(model, L"Walk", items), frame).at(1).origin[0];
    }
    void ExpectLikeTheWalk(const Zelk::ActionSource& motion, double bound) {
        const MotionEvaluator evaluator(Scene(), RecordOf(model), &RecordOf(motion));
        const MatrixWalk walk(RecordOf(model), RecordOf(motion));
        std::vector<Transform> globals(evaluator.Objects().size());
        std::vector<Transform> locals(globals.size());
        for (const double frame : {-5.0, 1.0, 1.5, 2.0, 3.75, 4.0, 99.0}) {
            evaluator.Evaluate(frame, globals);
            evaluator.EvaluateLocal(frame, locals);
            for (std::size_t index = 0; index < globals.size(); ++index) {
                const headless::Object& object = *evaluator.Objects()[index];
                const Matrix4 expected = walk.Global(object, frame);
                EXPECT_LT(Distance(OfTransform(globals[index]), expected), bound)
                    << Wide(object.name).c_str() << " in frame " << frame;
                if (index == 0) continue;
                const Matrix4 parent =
                    walk.Global(*evaluator.Objects()[evaluator.Parents()[index]], frame);
                EXPECT_LT(Distance(OfTransform(locals[index]) * parent, expected), bound);
            }
        }
    }

    Zelk::Model model;
    Zelk::Null hips;
};

struct KeyRow {
    const char* name;
    std::vector<double> times;
    std::vector<double> values;
    double frame;
    double value;
};

const KeyRow kKeyRows[] = {
    {"AtAKey", {1, 2, 3}, {10, 20, 40}, 2, 20},
    {"Between", {1, 2, 3}, {10, 20, 40}, 2.25, 25},
    {"HeldBefore", {1, 2, 3}, {10, 20, 40}, -7, 10},
    {"HeldAfter", {1, 2, 3}, {10, 20, 40}, 7, 40},
    {"OneKey", {5}, {50}, 1, 50},
    {"Unsorted", {3, 1, 2}, {40, 10, 20}, 2.25, 25},
    {"Falling", {3, 2, 1}, {40, 20, 10}, 1.5, 15},
    {"LastOfEqualTimes", {1, 2, 2, 3}, {10, 20, 30, 40}, 2, 30},
    {"LastOfEqualTimesBefore", {1, 2, 2, 3}, {10, 20, 30, 40}, 1.5, 20},
    {"LastOfEqualTimesUnsorted", {2, 3, 1, 2, 1}, {20, 40, 10, 30, 0}, 1.5, 15},
    {"EqualTimesOnly", {4, 4, 4}, {1, 2, 3}, 4, 3},
    {"EqualTimesOnlyBefore", {4, 4, 4}, {1, 2, 3}, 0, 3},
    {"NegativeTimes", {-2, -1}, {10, 20}, -1.5, 15},
    {"NoNumberAmongTimes", {1, kNan, 3}, {10, 99, 30}, 2, 20},
    {"NoNumberFirst", {kNan, 1, 3}, {99, 10, 30}, 0, 10},
    {"FrameIsNoNumber", {1, 2}, {10, 20}, kNan, 10},
    {"FrameIsInfinite", {1, 2}, {10, 20}, kInfinity, 20},
    {"InfiniteTime", {1, kInfinity}, {10, 20}, 5, 10},
    {"InfiniteValueAtItsNeighbour", {1, 2}, {10, kInfinity}, 1, 10},
    {"OnlyTimesThatAreNoNumbers", {kNan, kNan}, {10, 20}, 1, 1},
    {"TwoZeros", {0.0, -0.0}, {10, 20}, 0, 20},
};

TEST_F(Evaluation, ReadsKeysInTimeOrder) {
    for (const KeyRow& row : kKeyRows)
        EXPECT_DOUBLE_EQ(HipsX({{L"Hips.kine.local.posx", row.times, row.values}}, row.frame),
                         row.value)
            << row.name;
}

TEST_F(Evaluation, LeavesChannelsWithoutACurve) {
    const Transform at =
        At(AddAction(model, L"Walk", {{L"Hips.kine.local.posx", {1, 2}, {10, 20}}}), 1.0)[1];
    EXPECT_THAT(at.origin, ElementsAre(10, 2, 3));
    EXPECT_EQ(Get(hips, L"posx"), 1.0) << "the scene stays as it is";
}

TEST_F(Evaluation, UsesTheLastItemOfAChannel) {
    const Item first = {L"Hips.kine.local.posx", {1}, {10}};
    const Item second = {L"Hips.kine.local.posx", {1}, {20}};
    const Item still = {L"Hips.kine.local.posx", {}, {30}};
    EXPECT_EQ(HipsX({first, second}, 1), 20);
    EXPECT_EQ(HipsX({first, still}, 1), 30);
    EXPECT_EQ(HipsX({still, first}, 1), 10);
}

TEST_F(Evaluation, SkipsItemsThatDriveNothing) {
    Zelk::ActionSource motion = AddAction(model, L"Walk",
                                          {{L"Nobody.kine.local.posx", {1}, {10}},
                                           {L"Hips.bone.length", {1}, {10}},
                                           {L"Hips.kine.local.sclx", {1}, {10}},
                                           {L"Hips", {1}, {10}}});
    motion.AddSourceItem(L"Hips.kine.local.posx", 10.0, false);
    const Scratch scratch = AddScratch(hips);
    motion.AddSourceItem(L"Hips.kine.local.posx", scratch.curve.GetRef(), true);
    EXPECT_THAT(At(motion, 1)[1].origin, ElementsAre(1, 2, 3));
}

TEST_F(Evaluation, MovesTheModelItself) {
    Put(model, L"posy", 5);
    const auto at = At(AddAction(model, L"Walk", {{L"kine.local.posx", {1}, {10}}}), 1);
    EXPECT_THAT(at[0].origin, ElementsAre(10, 5, 0));
    EXPECT_THAT(at[1].origin, ElementsAre(11, 7, 3));
}

TEST_F(Evaluation, StartsFromTheModelsParent) {
    const Zelk::Null stage = AddNull(SceneRoot(), L"Stage");
    Place(stage, 0, 0, 100);
    Put(stage, L"roty", 90);
    ASSERT_TRUE(Zelk::Null(stage).AddChild(Refs({model})).Succeeded());
    Zelk::ActionSource motion = model.AddActionSource(L"Walk");
    const Transform at = At(motion, 1)[1];
    EXPECT_LT(Distance(OfTransform(at), GlobalOf(RecordOf(hips))), kExact);
    EXPECT_NEAR(at.origin[2], 99.0, kExact);
}

TEST_F(Evaluation, GivesParentsBeforeChildren) {
    const Zelk::ChainRoot chain = AddChain(hips, {}, {1, 0, 0});
    const Zelk::ChainBone second = AddBone(chain, {2, 0, 0});
    ASSERT_TRUE(hips.AddChild(Refs({chain.GetEffector()})).Succeeded());
    // Now the effector is before its chain's last bone in the tree, and has an object under it.
    ASSERT_TRUE(hips.AddChild(Refs({chain})).Succeeded());
    AddNull(chain.GetEffector(), L"Tip");
    AddNull(second, L"Ring");
    const MotionEvaluator evaluator(Scene(), RecordOf(model), nullptr);
    const auto& objects = evaluator.Objects();
    ASSERT_EQ(objects.size(), Scene().Objects().size());
    EXPECT_EQ(objects[0], &RecordOf(model));
    EXPECT_EQ(evaluator.Parents()[0], 0u);
    for (std::size_t index = 1; index < objects.size(); ++index) {
        EXPECT_LT(evaluator.Parents()[index], index);
        EXPECT_EQ(objects[evaluator.Parents()[index]], objects[index]->parent);
    }
}

TEST_F(Evaluation, AgreesWithAWalkOfMatricesForNulls) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-200, 200);
    Zelk3DObject parent = hips;
    std::vector<std::wstring> targets;
    for (int count = 0; count < 12; ++count) {
        const Zelk::Null null = AddNull(parent, L"joint");
        Place(null, number(random) / 20, number(random) / 20, number(random) / 20);
        Put(null, L"rotx", number(random));
        for (const wchar_t* channel : {L"posx", L"posz", L"rotx", L"roty", L"rotz"})
            if (number(random) > -80) targets.push_back(NameOf(null) + L".kine.local." + channel);
        if (count % 3 != 0) parent = null;
    }
    std::vector<Item> items;
    for (const std::wstring& target : targets) {
        std::vector<double> values(4);
        for (double& value : values)
            value = number(random) / (target.find(L"pos") == std::wstring::npos ? 1 : 20);
        items.push_back({target.c_str(), {1, 2, 3, 4}, values});
    }
    ExpectLikeTheWalk(AddAction(model, L"Walk", items), kExact);
}

class ChainEvaluation : public Evaluation {
  protected:
    void SetUp() override {
        Evaluation::SetUp();
        Put(hips, L"roty", 35);
        chain = AddChain(hips, {1, 2, 3}, {4, 2, 7});
        BoneOf(chain, 0).PutName(L"Arm");
        AddBone(chain, {4, 5, 7}, L"Hand");
        AddBone(chain, {5, 5, 7}, L"Finger");
        chain.GetEffector().PutName(L"Eff");
        tip = AddNull(chain.GetEffector(), L"Tip");
        Place(tip, 1, 0, 0);
        AddNull(tip, L"Nail");
        below = AddChain(tip, {5, 6, 7}, {5, 9, 7}, L"Below");
    }
    Zelk::ActionSource Motion() {
        return AddAction(model, L"Walk",
                         {{L"Hips.kine.local.rotx", {1, 2, 4}, {0, 30, -20}},
                          {L"Arm.kine.local.posx", {1, 2, 3, 4}, {5, 6, 7, -8}},
                          {L"Arm.kine.local.posz", {1, 2, 3, 4}, {0, -6, 7, 8}},
                          {L"Arm.kine.local.rotx", {1, 2, 3, 4}, {0, 45, 90, 135}},
                          {L"Arm.bone.length", {1, 2, 3, 4}, {5, 0, -3, 8}},
                          {L"Hand.kine.local.rotz", {1, 4}, {-20, 160}},
                          {L"Hand.bone.length", {4, 1}, {-9, 9}},
                          {L"Finger.kine.local.roty", {1, 2}, {80, 90}},
                          {L"Finger.bone.length", {1, 4}, {1, 0}},
                          {L"Tip.kine.local.rotz", {1, 4}, {10, 20}}});
    }

    Zelk::ChainRoot chain;
    Zelk::Null tip;
    Zelk::ChainRoot below;
};

TEST_F(ChainEvaluation, AgreesWithAWalkOfMatrices) {
    ExpectLikeTheWalk(Motion(), kExact);
}

TEST_F(ChainEvaluation, AgreesUnderAnyParentOfTheEffector) {
    const Zelk::Null far = AddNull(model, L"Far");
    Put(far, L"rotx", 20);
    for (Zelk3DObject parent :
         {Zelk3DObject(BoneOf(chain, 2).GetRef()), Zelk3DObject(BoneOf(chain, 0).GetRef()),
          Zelk3DObject(far.GetRef()), Zelk3DObject(model.GetRef())}) {
        ASSERT_TRUE(parent.AddChild(Refs({chain.GetEffector()})).Succeeded());
        ExpectLikeTheWalk(Motion(), kExact);
    }
}

TEST_F(ChainEvaluation, AppliesAFirstBonesPositionToTheRoot) {
    const Zelk::ActionSource motion =
        AddAction(model, L"Walk",
                  {{L"Arm.kine.local.posx", {1, 2}, {10, 20}}, {L"Arm.kine.local.posz", {}, {7}}});
    const MotionEvaluator evaluator(Scene(), RecordOf(model), &RecordOf(motion));
    std::vector<Transform> locals(evaluator.Objects().size());
    evaluator.EvaluateLocal(1.5, locals);
    const auto index =
        std::find(evaluator.Objects().begin(), evaluator.Objects().end(), &RecordOf(chain)) -
        evaluator.Objects().begin();
    EXPECT_THAT(locals[static_cast<std::size_t>(index)].origin,
                ElementsAre(15, RecordOf(chain).local[1], 7));
    EXPECT_THAT(locals[static_cast<std::size_t>(index) + 1].origin, ElementsAre(0, 0, 0));
}

TEST_F(ChainEvaluation, IgnoresWhatTheChainComputes) {
    const Zelk::ActionSource still = AddAction(model, L"Still", {});
    const Zelk::ActionSource motion = AddAction(model, L"Walk",
                                                {{L"Hand.kine.local.posx", {1}, {10}},
                                                 {L"Eff.kine.local.posx", {1}, {10}},
                                                 {L"Eff.kine.local.rotx", {1}, {10}}});
    const auto expected = At(still, 1);
    const auto given = At(motion, 1);
    for (std::size_t index = 0; index < given.size(); ++index)
        EXPECT_EQ(Distance(OfTransform(given[index]), OfTransform(expected[index])), 0.0);
}

TEST_F(ChainEvaluation, AgreesWithAnAppliedBasePose) {
    const Zelk::ActionSource pose = AddAction(model, L"Pose",
                                              {{L"Arm.kine.local.posx", {}, {7}},
                                               {L"Arm.kine.local.rotz", {}, {20}},
                                               {L"Hand.bone.length", {}, {-2}},
                                               {L"Hand.kine.local.posy", {}, {50}},
                                               {L"Eff.kine.local.rotx", {}, {10}},
                                               {L"Finger.bone.length", {}, {0}}});
    const auto expected = At(pose, 1);
    ASSERT_EQ(Apply(pose, model), Zelk::status::kOk);
    const MotionEvaluator evaluator(Scene(), RecordOf(model), nullptr);
    for (std::size_t index = 0; index < expected.size(); ++index)
        EXPECT_LT(Distance(OfTransform(expected[index]), GlobalOf(*evaluator.Objects()[index])),
                  kExact);
    EXPECT_EQ(Get(chain, L"posx"), 7.0);
    EXPECT_EQ(Get(BoneOf(chain, 0), L"posx"), 0.0);
    EXPECT_EQ(Get(BoneOf(chain, 1), L"posy"), 0.0);
}

TEST_F(Evaluation, CanBeMoved) {
    MotionEvaluator first(Scene(), RecordOf(model), nullptr);
    const MotionEvaluator second = std::move(first);
    EXPECT_EQ(second.Objects().size(), 2u);
}

}  // namespace evaluation_test
