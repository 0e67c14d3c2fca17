#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/headless/host_scene.h"
#include "tests/headless/matrix_walk.h"

using namespace host_test;
using testing::ElementsAre;

namespace effector_test {

// The rounding error of a few products of numbers up to 20.
constexpr double kExact = 5e-14;

class Effectors : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        Place(hips, 3, -2, 5);
        Put(hips, L"rotx", 30);
        Put(hips, L"roty", -50);
        Put(hips, L"rotz", 110);
        chain = AddChain(hips, {1, 2, 3}, {4, 2, 7});
        second = AddBone(chain, {4, 14, 12});
        effector = chain.GetEffector();
        tip = AddNull(effector, L"Tip");
        Place(tip, 0.5, 0.25, -1);
    }

    static Matrix4 At(const Zelk::CBase& object) { return GlobalOf(RecordOf(object)); }
    static Matrix4 WithoutOrigin(Matrix4 matrix) {
        std::fill_n(matrix[3], 3, 0.0);
        return matrix;
    }
    // The effector's global transform as computed from the last bone and the kept rotation.
    Matrix4 ByTheBone() const {
        const headless::Object& last = *RecordOf(chain).chainData->bones.back();
        Matrix4 seen = OfLocal({last.length, 0, 0, 0, 0, 0});
        const auto& angle = RecordOf(effector).chainRoot->chainData->effectorAngle;
        for (std::size_t entry = 0; entry < 9; ++entry)
            seen[entry / 3][entry % 3] = angle[entry];
        return seen * GlobalOf(last);
    }
    void ExpectAtTheEnd() const { EXPECT_LT(Distance(At(effector), ByTheBone()), kExact); }
    void ExpectRotationOf(const Zelk::CBase& other) const {
        EXPECT_LT(Distance(WithoutOrigin(At(effector)), WithoutOrigin(At(other))), kExact);
    }
    void Move(Zelk3DObject parent) {
        const Matrix4 before = At(effector);
        const Matrix4 tipBefore = At(tip);
        ASSERT_TRUE(parent.AddChild(Refs({effector})).Succeeded());
        ASSERT_EQ(effector.GetParent().GetRef(), parent.GetRef());
        EXPECT_LT(Distance(At(effector), before), kExact) << "it keeps its pose";
        EXPECT_LT(Distance(At(tip), tipBefore), kExact);
        ExpectAtTheEnd();
    }

    Zelk::Model model;
    Zelk::Null hips;
    Zelk::ChainRoot chain;
    Zelk::ChainBone second;
    Zelk::ChainEffector effector;
    Zelk::Null tip;
};

TEST_F(Effectors, AreAtTheEndWithTheRootsRotation) {
    const Matrix4 global = At(effector);
    EXPECT_NEAR(global[3][0], 4.0, kExact);
    EXPECT_NEAR(global[3][1], 14.0, kExact);
    EXPECT_NEAR(global[3][2], 12.0, kExact);
    for (const wchar_t* name : {L"rotx", L"roty", L"rotz"})
        EXPECT_EQ(Get(effector, name), 0.0) << "exactly";
    ExpectRotationOf(chain);
    ExpectAtTheEnd();
}

TEST_F(Effectors, DoNotRotateTheirChildren) {
    EXPECT_LT(Distance(WithoutOrigin(At(tip)), WithoutOrigin(At(hips))), kExact);
}

TEST_F(Effectors, RotateWithTheLastBone) {
    for (const wchar_t* name : {L"rotx", L"roty", L"rotz"}) {
        const auto angle = RecordOf(effector).chainRoot->chainData->effectorAngle;
        ASSERT_TRUE(Put(second, name, 77).Succeeded());
        EXPECT_EQ(RecordOf(effector).chainRoot->chainData->effectorAngle, angle);
        ExpectAtTheEnd();
        ASSERT_TRUE(Put(BoneOf(chain, 0), name, -33).Succeeded());
        ExpectAtTheEnd();
    }
}

TEST_F(Effectors, MoveTheObjectsUnderThem) {
    const Matrix4 seen = OfLocal(RecordOf(tip).local);
    Put(second, L"roty", 25);
    Put(BoneOf(chain, 0), L"rotz", 10);
    EXPECT_LT(Distance(At(tip), seen * ByTheBone()), kExact);
}

TEST_F(Effectors, MoveWithTheChain) {
    const auto local = RecordOf(effector).local;
    Put(hips, L"roty", 20);
    Put(chain, L"rotx", 45);
    Place(hips, 1, 1, 1);
    Put(model, L"posy", 4);
    ExpectAtTheEnd();
    EXPECT_EQ(RecordOf(effector).local, local) << "seen from the root nothing has moved";
}

TEST_F(Effectors, FollowEveryLength) {
    for (const double length : {20.0, 1e-3, 0.0, -4.0, 5.0}) {
        ASSERT_TRUE(Put(second, L"length", length).Succeeded());
        EXPECT_EQ(Get(second, L"length"), length);
        ExpectAtTheEnd();
        ASSERT_TRUE(Put(BoneOf(chain, 0), L"length", -2 * length).Succeeded());
        EXPECT_EQ(RecordOf(second).local[0], -2 * length) << "the next bone begins at its end";
        ExpectAtTheEnd();
    }
}

TEST_F(Effectors, GetTheRootsOrientationWheneverABoneIsAdded) {
    Put(second, L"rotx", 70);
    Put(chain, L"roty", 15);
    const Zelk::ChainBone third = AddBone(chain, {0, 1, 2});
    ExpectRotationOf(chain);
    ExpectAtTheEnd();
    EXPECT_NEAR(At(effector)[3][1], 1.0, kExact);
    for (const wchar_t* name : {L"rotx", L"roty", L"rotz"})
        EXPECT_EQ(Get(effector, name), 0.0);
    Put(third, L"rotz", 12);
    ExpectAtTheEnd();
}

TEST_F(Effectors, KeepTheirAngleUnderTheLastBone) {
    Move(second);
    EXPECT_THAT(RecordOf(effector).local[0], testing::DoubleEq(Get(second, L"length")));
    const auto local = RecordOf(effector).local;
    Put(second, L"rotx", 60);
    Put(hips, L"roty", 5);
    EXPECT_EQ(RecordOf(effector).local, local) << "seen from the bone nothing has moved";
    ExpectAtTheEnd();
    Put(second, L"length", 3);
    EXPECT_EQ(Get(effector, L"posx"), 3.0);
    ExpectAtTheEnd();
}

TEST_F(Effectors, KeepTheirPoseUnderAnyParent) {
    const Zelk::Null other = AddNull(AddModel(L"Other"), L"Far");
    Place(other, -3, 8, 1);
    Put(other, L"rotz", 33);
    for (const Zelk3DObject& parent :
         {Zelk3DObject(other.GetRef()), Zelk3DObject(BoneOf(chain, 0).GetRef()),
          Zelk3DObject(hips.GetRef()), Zelk3DObject(second.GetRef()), Zelk3DObject(chain.GetRef()),
          Zelk3DObject(model.GetRef())}) {
        Move(parent);
        Put(second, L"roty", Get(second, L"roty") + 20);
        ExpectAtTheEnd();
        Put(BoneOf(chain, 0), L"length", Get(second, L"length") + 1);
        ExpectAtTheEnd();
        Put(hips, L"rotx", Get(hips, L"rotx") + 10);
        ExpectAtTheEnd();
        Place(other, 4, 4, Get(other, L"posz") + 1);
        ExpectAtTheEnd();
        Put(chain, L"rotz", Get(chain, L"rotz") - 10);
        ExpectAtTheEnd();
    }
}

TEST_F(Effectors, StayAtTheEndWhenTheirParentMoves) {
    Move(AddNull(model, L"Far"));
    const Zelk::Null far(effector.GetParent().GetRef());
    const Matrix4 before = At(effector);
    Place(far, 100, 0, 0);
    Put(far, L"rotz", 45);
    EXPECT_LT(Distance(At(effector), before), 1e-12);
    EXPECT_LT(Get(effector, L"posx"), -50.0);
}

TEST_F(Effectors, MoveToTheNewEndUnderAnyParent) {
    const Zelk::Null far = AddNull(model, L"Far");
    Place(far, 5, 5, 5);
    for (const Zelk3DObject& parent : {Zelk3DObject(second.GetRef()), Zelk3DObject(far.GetRef())}) {
        Move(parent);
        AddBone(chain, {Get(second, L"posx"), 1, 9});
        ExpectRotationOf(chain);
        ExpectAtTheEnd();
        EXPECT_NEAR(At(effector)[3][2], 9.0, kExact);
    }
}

TEST_F(Effectors, KeepTheirTransformWhenTheirChainIsDeleted) {
    Move(AddNull(model, L"Far"));
    const Matrix4 before = At(effector);
    ASSERT_EQ(Delete(L"Skel.Root"), Zelk::status::kOk);
    ASSERT_TRUE(effector.IsValid());
    EXPECT_FALSE(second.IsValid());
    EXPECT_LT(Distance(At(effector), before), kExact);
    EXPECT_FALSE(effector.GetEffector().IsValid()) << "it belongs to no chain";
    EXPECT_TRUE(Place(effector, 1, 2, 3).Succeeded()) << "so its transform can be set";
    EXPECT_THAT(RecordOf(effector).local, ElementsAre(1, 2, 3, 0, 0, 0));
    EXPECT_EQ(Delete(L"Skel.Far"), Zelk::status::kOk);
    EXPECT_FALSE(effector.IsValid());
}

TEST_F(Effectors, MoveBackWhenBonesAreDeleted) {
    second.PutName(L"Second");
    AddBone(chain, {0, 0, 0});
    ASSERT_EQ(Delete(L"Skel.Second"), Zelk::status::kOk);
    EXPECT_EQ(chain.GetBones().GetCount(), 1u);
    ExpectAtTheEnd();
    EXPECT_NEAR(At(effector)[3][2], 7.0, kExact);
    Put(BoneOf(chain, 0), L"rotz", 10);
    ExpectAtTheEnd();
    BoneOf(chain, 0).PutName(L"First");
    ASSERT_EQ(Delete(L"Skel.First"), Zelk::status::kOk);
    EXPECT_EQ(chain.GetBones().GetCount(), 0u);
    EXPECT_LT(Distance(At(effector), At(chain)), kExact) << "an empty chain ends at its root";
    const Zelk::ChainBone fresh = AddBone(chain, {1, 2, 4});
    EXPECT_NEAR(Get(fresh, L"length"), 1.0, kExact);
    ExpectAtTheEnd();
}

TEST_F(Effectors, MayBeDeletedAlone) {
    effector.PutName(L"Eff");
    ASSERT_EQ(Delete(L"Skel.Eff"), Zelk::status::kOk);
    EXPECT_FALSE(tip.IsValid());
    EXPECT_FALSE(chain.GetEffector().IsValid());
    EXPECT_FALSE(second.GetEffector().IsValid());
    const Zelk::ChainBone third = AddBone(chain, {4, 14, 13});
    EXPECT_NEAR(At(third)[3][1], 14.0, kExact);
    EXPECT_NEAR(Get(third, L"length"), 1.0, kExact);
    EXPECT_TRUE(Put(third, L"length", 2).Succeeded());
    EXPECT_TRUE(Put(second, L"rotx", 2).Succeeded());
}

}  // namespace effector_test
