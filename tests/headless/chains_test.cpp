// Chains after they were made.
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

#include "headless/evaluation.h"
#include "tests/headless/host_scene.h"
#include "tests/headless/matrix_walk.h"
#include "tests/support/math.h"

using namespace host_test;
using support::Cross;
using support::Dot;
using support::Vec3;
using testing::DoubleNear;
using testing::ElementsAre;
using Zelk::MATH::CVector3;

namespace {

// The rounding error of a few products of numbers up to 10.
constexpr double kExact = 2e-14;

class Chains : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
    }

    // A null with a position and rotations about all axes.
    Zelk::Null TurnedNull() {
        const Zelk::Null null = AddNull(model, L"Hips");
        Place(null, 3, -2, 5);
        Put(null, L"rotx", 30);
        Put(null, L"roty", -50);
        Put(null, L"rotz", 110);
        return null;
    }
    static Vec3 Axis(const Zelk::CBase& object, std::size_t row) {
        const Matrix4 matrix = GlobalOf(RecordOf(object));
        return {matrix[row][0], matrix[row][1], matrix[row][2]};
    }
    static Vec3 Origin(const Zelk::CBase& object) { return Axis(object, 3); }

    static void ExpectNear(const Vec3& a, const Vec3& b, double bound = kExact) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(a[axis], b[axis], bound);
    }

    Zelk::Model model;
};

TEST_F(Chains, HaveARootABoneAndAnEffectorInThatOrder) {
    const Zelk::ChainRoot chain = AddChain(model, {1, 2, 3}, {1, 2, 8});
    const Zelk::ChainBone bone = BoneOf(chain, 0);
    const Zelk::ChainEffector effector = chain.GetEffector();
    EXPECT_EQ(RecordOf(chain).type, headless::ObjectType::ChainRoot);
    EXPECT_EQ(RecordOf(bone).type, headless::ObjectType::ChainBone);
    EXPECT_EQ(RecordOf(effector).type, headless::ObjectType::ChainEffector);
    EXPECT_EQ(chain.GetBones().GetCount(), 1u);
    EXPECT_LT(RecordOf(chain).id, RecordOf(bone).id);
    EXPECT_LT(RecordOf(bone).id, RecordOf(effector).id);
    EXPECT_EQ(RecordOf(chain).parent, &RecordOf(model));
    EXPECT_EQ(RecordOf(bone).parent, &RecordOf(chain));
    EXPECT_EQ(RecordOf(effector).parent, &RecordOf(chain));
}

TEST_F(Chains, GrowAtTheirEnd) {
    const Zelk::ChainRoot chain = AddChain(model, {}, {1, 0, 0});
    const Zelk::ChainBone second = AddBone(chain, {1, 1, 0});
    const Zelk::ChainBone third = AddBone(chain, {1, 1, 1});
    const Zelk::CRefArray bones = chain.GetBones();
    ASSERT_EQ(bones.GetCount(), 3u);
    EXPECT_EQ(bones[1], second.GetRef());
    EXPECT_EQ(bones[2], third.GetRef());
    EXPECT_EQ(RecordOf(second).parent->id, bones[0].Object());
    EXPECT_EQ(RecordOf(third).parent, &RecordOf(second));
    for (const Zelk::ChainElement& element :
         {Zelk::ChainElement(chain.GetRef()), Zelk::ChainElement(third.GetRef()),
          Zelk::ChainElement(chain.GetEffector().GetRef())})
        EXPECT_EQ(element.GetEffector().GetRef(), chain.GetEffector().GetRef());
    EXPECT_FALSE(Zelk::ChainElement(model.GetRef()).GetEffector().IsValid());
}

TEST_F(Chains, HaveThePositionsThatWereGiven) {
    const Zelk::Null hips = TurnedNull();
    const Zelk::ChainRoot chain = AddChain(hips, {1, 2, 3}, {4, 2, 7}, L"Root", {0, 1, 0});
    const Zelk::ChainBone second = AddBone(chain, {4, 5, 7});
    ExpectNear(Origin(chain), {1, 2, 3});
    ExpectNear(Origin(BoneOf(chain, 0)), {1, 2, 3});
    ExpectNear(Origin(second), {4, 2, 7});
    ExpectNear(Origin(chain.GetEffector()), {4, 5, 7});
}

TEST_F(Chains, HaveARootWithoutARotationOfItsOwn) {
    const Zelk::Null hips = TurnedNull();
    const Zelk::ChainRoot chain = AddChain(hips, {1, 2, 3}, {4, 2, 7});
    for (const wchar_t* name : {L"rotx", L"roty", L"rotz"})
        EXPECT_EQ(Get(chain, name), 0.0);
    for (std::size_t row = 0; row < 3; ++row)
        ExpectNear(Axis(chain, row), Axis(hips, row));
}

TEST_F(Chains, HaveBonesAsLongAsTheirDistances) {
    const Zelk::ChainRoot chain = AddChain(TurnedNull(), {1, 2, 3}, {4, 2, 7});
    const Zelk::ChainBone second = AddBone(chain, {4, 14, 12});
    EXPECT_DOUBLE_EQ(Get(BoneOf(chain, 0), L"length"), 5.0);
    EXPECT_DOUBLE_EQ(Get(second, L"length"), 13.0);
}

TEST_F(Chains, HaveBonesAtTheEndOfTheBoneBefore) {
    const Zelk::ChainRoot chain = AddChain(model, {1, 2, 3}, {4, 2, 7});
    const Zelk::ChainBone second = AddBone(chain, {4, 14, 12});
    const Zelk::ChainBone third = AddBone(chain, {0, 0, 0});
    const auto position = [](const Zelk::CBase& bone) {
        const auto& local = RecordOf(bone).local;
        return std::vector<double>(local.begin(), local.begin() + 3);
    };
    EXPECT_THAT(position(BoneOf(chain, 0)), ElementsAre(0, 0, 0));
    EXPECT_THAT(position(second), ElementsAre(Get(BoneOf(chain, 0), L"length"), 0, 0));
    EXPECT_THAT(position(third), ElementsAre(Get(second, L"length"), 0, 0));
}

TEST_F(Chains, HaveBonesThatPointAlongXWithTheNormalAsZ) {
    const Zelk::Null hips = TurnedNull();
    const CVector3 kWays[] = {{1, 0, 0},           {0, 1, 0},        {0, 0, 1},    {-1, 0, 0},
                              {0, -1, 0},          {0, 0, -1},       {1, 2, 3},    {-3, 0.5, 1},
                              {1, 1e-4, 0},        {1e-5, 0, 1},     {0, 1, 1e-6}, {5e3, 1, 0},
                              {1e-150, 2e-150, 0}, {0, 1e150, 1e150}};
    const CVector3 kNormals[] = {{0, 0, 1},  {0, 1, 0},           {1, 0, 0},         {1, 1, 1},
                                 {0, 0, -7}, {1e-200, 0, 1e-200}, {1e200, -1e200, 0}};
    for (const CVector3& way : kWays)
        for (const CVector3& normal : kNormals) {
            const Zelk::ChainRoot chain = AddChain(hips, {}, way, L"Root", normal);
            const Zelk::ChainBone bone = BoneOf(chain, 0);
            const Vec3 x = Axis(bone, 0);
            const Vec3 z = Axis(bone, 2);
            ExpectNear(Axis(bone, 1), Cross(z, x));
            EXPECT_NEAR(Dot(x, x), 1.0, kExact);
            EXPECT_NEAR(Dot(z, z), 1.0, kExact);
            EXPECT_NEAR(Dot(x, z), 0.0, kExact);
            ExpectNear(x, support::Unit({way.x, way.y, way.z}));
            const Vec3 unit = support::Unit({normal.x, normal.y, normal.z});
            const double share = Dot(unit, x);
            if (std::fabs(share) > 1.0 - 1e-14) continue;  // parallel
            // The normal without its component along the bone. If the two are nearly parallel, it
            // is short, and its rounding error is large in comparison.
            const Vec3 rest = support::Subtract(unit, support::Scale(x, share));
            ExpectNear(z, support::Unit(rest), 1e-15 / support::Length(rest) + kExact);
        }
}

TEST_F(Chains, UseAnotherAxisForAParallelNormal) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const CVector3 kNormals[] = {{0, 0, 1}, {0, 0, -3}, {0, 0, 0}, {0, kNan, 0}, {kInfinity, 0, 0}};
    for (const CVector3& normal : kNormals)
        for (const double sign : {1.0, -1.0}) {
            const Zelk::ChainBone bone =
                BoneOf(AddChain(model, {}, {0, 0, 2 * sign}, L"Root", normal), 0);
            ExpectNear(Axis(bone, 0), {0, 0, sign});
            EXPECT_NEAR(Dot(Axis(bone, 2), Axis(bone, 0)), 0.0, kExact);
            EXPECT_NEAR(Dot(Axis(bone, 2), Axis(bone, 2)), 1.0, kExact);
            ExpectNear(Axis(bone, 1), Cross(Axis(bone, 2), Axis(bone, 0)));
        }
}

TEST_F(Chains, GiveAFirstBoneWithoutLengthTheRootsOrientation) {
    const Zelk::Null hips = TurnedNull();
    const Zelk::ChainRoot chain = AddChain(hips, {1, 2, 3}, {1, 2, 3});
    EXPECT_THAT(RecordOf(BoneOf(chain, 0)).local, ElementsAre(0, 0, 0, 0, 0, 0));
    EXPECT_EQ(Get(BoneOf(chain, 0), L"length"), 0.0);
    const Zelk::ChainBone second = AddBone(chain, {1, 5, 3});
    ExpectNear(Axis(second, 0), {0, 1, 0});
    ExpectNear(Origin(second), {1, 2, 3});
    ExpectNear(Origin(chain.GetEffector()), {1, 5, 3});
}

TEST_F(Chains, GiveABoneWithoutLengthTheOrientationOfTheBoneBefore) {
    const Zelk::ChainRoot chain = AddChain(TurnedNull(), {1, 2, 3}, {4, 2, 7});
    const Zelk::ChainBone second = AddBone(chain, {4, 2, 7});
    const Zelk::ChainBone third = AddBone(chain, {4, 2, 7});
    EXPECT_THAT(RecordOf(second).local, ElementsAre(5, 0, 0, 0, 0, 0));
    EXPECT_THAT(RecordOf(third).local, ElementsAre(0, 0, 0, 0, 0, 0));
    const Zelk::ChainBone last = AddBone(chain, {4, 2, 6});
    ExpectNear(Axis(last, 0), {0, 0, -1});
    ExpectNear(Origin(last), {4, 2, 7});
}

TEST_F(Chains, ContinueStraightWithoutARotation) {
    const Zelk::ChainRoot chain = AddChain(model, {0, 0, 0}, {0, 2, 0});
    const Zelk::ChainBone second = AddBone(chain, {0, 5, 0});
    EXPECT_THAT(RecordOf(BoneOf(chain, 0)).local, ElementsAre(0, 0, 0, 0, 0, 90));
    EXPECT_THAT(RecordOf(second).local, ElementsAre(2, 0, 0, 0, 0, 0));
}

TEST_F(Chains, SurviveExtremePositions) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double bad : {kNan, kInfinity, -kInfinity, 1.7e308, 5e-324})
        for (int axis = 0; axis < 3; ++axis) {
            CVector3 position = {1, 2, 3};
            (axis == 0 ? position.x : axis == 1 ? position.y : position.z) = bad;
            const Zelk::ChainRoot chain = AddChain(model, position, {1, 2, 3});
            ASSERT_TRUE(chain.IsValid());
            EXPECT_TRUE(AddBone(chain, position).IsValid());
            EXPECT_TRUE(AddBone(chain, {0, 0, 0}).IsValid());
            EXPECT_EQ(chain.GetBones().GetCount(), 3u);
        }
}

// This holds after many more chains were made, for a plain chain, for one with an object under its
// effector, and for one whose effector is outside it.
TEST_F(Chains, GrowAndMoveLongAfterTheyWereMade) {
    Zelk::Null hips = TurnedNull();
    const auto addChain = [&] { return AddChain(hips, {1, 2, 3}, {4, 2, 7}); };
    const Zelk::ChainRoot plain = addChain(), carrying = addChain(), leading = addChain();
    const Zelk::Null carried = AddNull(carrying.GetEffector(), L"Hand");
    const Zelk::ChainEffector led = leading.GetEffector();
    ASSERT_TRUE(Zelk::Model(model).AddChild(Refs({led})).Succeeded());
    for (int number = 0; number < 3000; ++number)
        ASSERT_TRUE(AddChain(model, {0, 1, 0}, {0, 2, 0}).IsValid());

    const auto expectAt = [&](const Vec3& end) {
        for (const Zelk::CBase& object :
             {Zelk::CBase(plain.GetEffector()), Zelk::CBase(carried), Zelk::CBase(led)})
            ExpectNear(Origin(object), end, 2 * kExact);
    };
    ASSERT_TRUE(Put(hips, L"posy", 40).Succeeded());
    expectAt({4, 44, 7});
    for (const Zelk::ChainRoot& chain : {plain, carrying, leading})
        ASSERT_TRUE(AddBone(chain, {4, 47, 9}).IsValid());
    expectAt({4, 47, 9});
    ASSERT_TRUE(Put(hips, L"posy", 0).Succeeded());
    expectAt({4, 7, 9});
    const Zelk::ChainRoot under = AddChain(plain.GetEffector(), {4, 7, 9}, {5, 7, 9});
    ExpectNear(Origin(under), {4, 7, 9}, 2 * kExact);
}

TEST_F(Chains, EvaluateWithoutAMotionToTheirPresentTransforms) {
    const Zelk::ChainRoot chain = AddChain(TurnedNull(), {1, 2, 3}, {4, 2, 7});
    AddBone(chain, {4, 14, 12});
    AddNull(chain.GetEffector(), L"Tip");
    const headless::MotionEvaluator evaluator(Scene(), RecordOf(model), nullptr);
    std::vector<headless::Transform> globals(evaluator.Objects().size());
    evaluator.Evaluate(1.0, globals);
    ASSERT_EQ(globals.size(), 7u);
    for (std::size_t index = 0; index < globals.size(); ++index)
        EXPECT_THAT(Distance(OfTransform(globals[index]), GlobalOf(*evaluator.Objects()[index])),
                    DoubleNear(0.0, kExact));
}

}  // namespace
