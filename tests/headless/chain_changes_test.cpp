// Many random changes of chains: after each of them the records of the scene are consistent.
#include <gtest/gtest.h>
#include <random>

#include "headless/evaluation.h"
#include "tests/headless/host_scene.h"
#include "tests/headless/matrix_walk.h"

using namespace host_test;
using headless::Object;
using headless::ObjectType;

namespace {

class ChainChanges : public HostScene, public testing::WithParamInterface<unsigned> {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        for (const wchar_t* name : {L"A", L"B"})
            objects_.push_back(AddModel(name));
        for (int count = 0; count < 12; ++count)
            MakeSomething();
    }

    double Number(double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random_);
    }
    std::size_t Below(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }
    Zelk::MATH::CVector3 Somewhere() { return {Number(-5, 5), Number(-5, 5), Number(-5, 5)}; }
    Zelk3DObject Any() {
        std::erase_if(objects_, [](const Zelk3DObject& object) { return !object.IsValid(); });
        if (objects_.empty()) objects_.push_back(AddModel(L"A"));
        return objects_[Below(objects_.size())];
    }

    void MakeSomething() {
        if (Below(2) == 0) {
            objects_.push_back(AddNull(Any(), L"n"));
            const auto [x, y, z] = Somewhere();
            Place(objects_.back(), x, y, z);
            return;
        }
        const Zelk::ChainRoot chain = AddChain(Any(), Somewhere(), Somewhere(), L"r", Somewhere());
        objects_.push_back(chain);
        objects_.push_back(BoneOf(chain, 0));
        objects_.push_back(chain.GetEffector());
        Zelk3DObject(BoneOf(chain, 0)).PutName(L"b");
    }

    void ChangeSomething() {
        const Zelk3DObject object = Any();
        const wchar_t* const kChannels[] = {L"posx", L"posy", L"posz",  L"rotx",
                                            L"roty", L"rotz", L"length"};
        switch (Below(8)) {
            case 0:
                MakeSomething();
                break;
            case 1:
            case 2:
            case 3:
                Put(object, kChannels[Below(7)], Number(-90, 90) / 10);
                break;
            case 4:
                Put(object, L"rotz", Number(-180, 180));
                Put(object, L"length", Number(-3, 6));
                break;
            case 5:
            case 6:
                Any().AddChild(Refs({object}));
                break;
            default:
                if (RecordOf(object).chainRoot != nullptr) {
                    Zelk::ChainBone bone;
                    Zelk::ChainRoot(Zelk::CRef(RecordOf(object).chainRoot->id, 0))
                        .AddBone(Somewhere(), Zelk::zkChainBonePin, L"b", bone);
                    objects_.push_back(bone);
                } else if (Below(6) == 0) {
                    Delete(object.GetFullName().GetWideString());
                }
        }
        if (Below(40) == 0) Delete(Any().GetFullName().GetWideString());
    }

    std::mt19937 random_{GetParam()};
    std::vector<Zelk3DObject> objects_;
};

// The records of a bone or an effector agree with its chain.
void ExpectConsistent(const Object& object) {
    if (object.type == ObjectType::ChainBone) {
        const bool follows = object.parent->type == ObjectType::ChainBone;
        EXPECT_EQ(object.local[0], follows ? object.parent->length : 0.0);
        EXPECT_EQ(object.local[1], 0.0);
        EXPECT_EQ(object.local[2], 0.0);
    }
    if (object.type != ObjectType::ChainEffector || object.chainRoot == nullptr) return;
    const auto& bones = object.chainRoot->chainData->bones;
    const Object& end = bones.empty() ? *object.chainRoot : *bones.back();
    Matrix4 seen = OfLocal({bones.empty() ? 0.0 : end.length, 0, 0, 0, 0, 0});
    for (std::size_t entry = 0; entry < 9; ++entry)
        seen[entry / 3][entry % 3] = object.chainRoot->chainData->effectorAngle[entry];
    // The bound fits deep scenes of some tens of units.
    EXPECT_LT(Distance(GlobalOf(object), seen * GlobalOf(end)), 1e-11);
}

TEST_P(ChainChanges, KeepTheRecordsConsistent) {
    for (int step = 0; step < 150; ++step) {
        ChangeSomething();
        for (const Object* object : Scene().Objects())
            ExpectConsistent(*object);
        if (HasFailure()) FAIL() << "in step " << step;
    }
    for (const Object* model : Scene().Models()) {
        const headless::MotionEvaluator evaluator(Scene(), *model, nullptr);
        std::vector<headless::Transform> globals(evaluator.Objects().size());
        std::vector<headless::Transform> locals(evaluator.Objects().size());
        evaluator.Evaluate(0.0, globals);
        evaluator.EvaluateLocal(0.0, locals);
        for (std::size_t index = 0; index < globals.size(); ++index) {
            const Object& object = *evaluator.Objects()[index];
            EXPECT_LT(Distance(OfTransform(globals[index]), GlobalOf(object)), 1e-11);
            EXPECT_LT(Distance(OfTransform(locals[index]), OfLocal(object.local)), 1e-11);
            EXPECT_LE(evaluator.Parents()[index], index);
            if (index == 0) continue;
            EXPECT_EQ(evaluator.Objects()[evaluator.Parents()[index]], object.parent);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ChainChanges, testing::Range(0u, 60u));

}  // namespace
