#include "mocap/bone_matrices.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "headless/testing.h"
#include "mocap/scene_helpers.h"
#include "tests/mocap/scene.h"
#include "tests/support/core/session_text.h"
#include "tests/support/math.h"

namespace {

using mocap_test::MakeModel;
using mocap_test::MakeNull;
using mocap_test::Turn;
using support::Matrix4;

class BoneMatricesTest : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(false); }

    // A tree of nulls under a model. The parent of object i is object i / 2.
    static std::vector<Zelk3DObject> MakeTree(int count) {
        std::vector<Zelk3DObject> objects = {MakeModel(L"Skel")};
        for (int i = 1; i < count; ++i) {
            const auto parent = static_cast<std::size_t>(i) / 2;
            objects.push_back(MakeNull(objects[parent], std::to_wstring(i).c_str()));
            Turn(objects.back(), 7.0 * i, -3.0 * i, 11.0 * i);
        }
        return objects;
    }
};

void ExpectAlike(BoneMatrixCache& cache, Zelk3DObject object, const Zelk::CString& stop) {
    Matrix4 global, inverse;
    GetBoneGlobalMatrix(object, stop, global.m, inverse.m);
    const BoneMatrices cached = cache.Get(object);
    Matrix4 cachedGlobal, cachedInverse;
    std::copy_n(&cached.global[0][0], 16, &cachedGlobal.m[0][0]);
    std::copy_n(&cached.inverse[0][0], 16, &cachedInverse.m[0][0]);
    // The cache associates the products in another order, which changes the last digits.
    EXPECT_LE(Distance(cachedGlobal, global), 4e-15);
    EXPECT_LE(Distance(cachedInverse, inverse), 4e-15);
}

TEST_F(BoneMatricesTest, AgreeWithUncachedMatricesInAnyOrder) {
    std::vector<Zelk3DObject> objects = MakeTree(40);
    for (const wchar_t* stop : {L"Skel", L"3", L"nobody", L""}) {
        BoneMatrixCache forwards(stop), backwards(stop);
        for (const Zelk3DObject& object : objects)
            ExpectAlike(forwards, object, stop);
        for (auto object = objects.rbegin(); object != objects.rend(); ++object)
            ExpectAlike(backwards, *object, stop);
    }
}

TEST_F(BoneMatricesTest, OfAnEmptyHandleAreTheIdentity) {
    BoneMatrixCache cache(L"Skel");
    ExpectAlike(cache, Zelk3DObject(), L"Skel");
}

// The rotation of the stop counts for the stop itself, but not for the objects below it.
TEST_F(BoneMatricesTest, OfTheStopDoNotAffectItsChildren) {
    std::vector<Zelk3DObject> objects = MakeTree(8);
    BoneMatrixCache cache(L"1");
    ExpectAlike(cache, objects[1], L"1");
    ExpectAlike(cache, objects[2], L"1");
    ExpectAlike(cache, objects[5], L"1");
}

TEST_F(BoneMatricesTest, ReadNoAncestorMoreThanTwice) {
    constexpr int kDepth = 3000;
    std::vector<Zelk3DObject> objects = {MakeModel(L"Skel")};
    for (int i = 0; i < kDepth; ++i)
        objects.push_back(MakeNull(objects.back(), L"n"));
    BoneMatrixCache cache(L"Skel");
    const auto before = headless::OperationCalls("GetLocal");
    for (std::size_t i = 1; i < objects.size(); ++i)
        cache.Get(objects[i]);
    // Each object is read once for itself and once as an ancestor of another.
    EXPECT_LE(headless::OperationCalls("GetLocal") - before, 2U * kDepth);
}

}  // namespace
