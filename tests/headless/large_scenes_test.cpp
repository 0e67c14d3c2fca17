// Scenes of a hundred thousand objects. If the time grew with the square of that, it would be
// minutes.
#include <gtest/gtest.h>

#include "headless/evaluation.h"
#include "tests/headless/host_scene.h"
#include "tests/headless/matrix_walk.h"

using namespace host_test;

namespace {

using LargeScenes = HostScene;

constexpr std::uint32_t kMany = 100'000;

void ExpectNothingLeft() {
    ASSERT_EQ(Delete(L"Skel"), Zelk::status::kOk);
    EXPECT_TRUE(Scene().Objects().empty());
    EXPECT_TRUE(Scene().Models().empty());
}

TEST_F(LargeScenes, HoldManyChildrenOfOneName) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::CRefArray all;
    for (std::uint32_t number = 0; number < kMany; ++number) {
        const Zelk::Null null = AddNull(model, L"Joint");
        ASSERT_TRUE(Place(null, number, 0, 0).Succeeded());
        all.Add(null.GetRef());
    }
    EXPECT_EQ(NameOf(ZKObject(all[kMany - 1])), L"Joint" + std::to_wstring(kMany - 1));
    EXPECT_EQ(RecordOf(Zelk::CBase(all[777])).local[0], 777.0);
    AddGroup(model, L"All", all);
    for (const wchar_t* name : {L"Skel.Joint5", L"Joint99999", L"Skel.Joint"})
        EXPECT_EQ(Delete(name), Zelk::status::kOk);
    EXPECT_EQ(RecordOf(model).modelData->groups[0]->members.size(), kMany - 3);
    EXPECT_EQ(NameOf(AddNull(model, L"Joint")), L"Joint");
    EXPECT_EQ(NameOf(AddNull(model, L"Joint")), L"Joint5");
    ExpectNothingLeft();
}

TEST_F(LargeScenes, HoldNullsOneBelowTheOther) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::ActionSource pose = Zelk::Model(model).AddActionSource(L"Pose");
    Zelk3DObject parent = model;
    for (std::uint32_t number = 0; number < kMany; ++number) {
        parent = AddNull(parent, L"Joint");
        ASSERT_TRUE(Place(parent, 1, 0, 0).Succeeded());
        for (const wchar_t* channel : {L".kine.local.posx", L".kine.local.rotz"})
            pose.AddSourceItem(parent.GetName() + Zelk::CString(channel), 0.5, true);
    }
    EXPECT_EQ(Apply(pose, model), Zelk::status::kOk);
    EXPECT_EQ(Get(parent, L"posx"), 0.5);
    EXPECT_EQ(FullNameOf(parent), L"Skel.Joint99999");
    const headless::MotionEvaluator evaluator(Scene(), RecordOf(model), &RecordOf(pose));
    std::vector<headless::Transform> globals(evaluator.Objects().size());
    evaluator.Evaluate(1.0, globals);
    EXPECT_EQ(globals.size(), kMany + 1);
    ASSERT_TRUE(Zelk::Model(model).AddChild(Refs({parent})).Succeeded());
    ASSERT_TRUE(AddModel(L"Other")
                    .AddChild(Refs({Zelk::CBase(Zelk::CRef(RecordOf(model).firstChild->id, 0))}))
                    .Succeeded());
    EXPECT_EQ(Delete(L"Other"), Zelk::status::kOk);
    ExpectNothingLeft();
}

TEST_F(LargeScenes, HoldAChainOfManyBones) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::ChainRoot chain = AddChain(model, {0, 0, 0}, {1, 0, 0});
    Zelk::ChainBone bone;
    for (std::uint32_t number = 1; number < kMany; ++number)
        bone = AddBone(chain, {number % 2 == 0 ? 1.0 : 0.0, number % 3 == 0 ? 1.0 : 0.0,
                               static_cast<double>(number)});
    EXPECT_EQ(chain.GetBones().GetCount(), kMany);
    // The rounding errors of all bones before it add up in each bone.
    const Matrix4 end = GlobalOf(RecordOf(chain.GetEffector()));
    EXPECT_NEAR(end[3][2], kMany - 1.0, 1e-12);
    const headless::MotionEvaluator evaluator(Scene(), RecordOf(model), nullptr);
    std::vector<headless::Transform> globals(evaluator.Objects().size());
    evaluator.Evaluate(1.0, globals);
    EXPECT_LT(Distance(OfTransform(globals.back()), end), 1e-3);
    ASSERT_TRUE(bone.AddChild(Refs({chain.GetEffector()})).Succeeded());
    EXPECT_NEAR(Get(chain.GetEffector(), L"posx"), Get(bone, L"length"), 1e-9);
    ExpectNothingLeft();
}

TEST_F(LargeScenes, HoldManyChains) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk3DObject parent = model;
    for (std::uint32_t number = 0; number < kMany / 3; ++number) {
        const double height = number;
        const Zelk::ChainRoot chain =
            AddChain(parent, {0, height, 0}, {1, height + 1, 0}, L"ArmRoot");
        ASSERT_TRUE(chain.IsValid());
        Zelk3DObject(BoneOf(chain, 0)).PutName(L"Arm");
        chain.GetEffector().PutName(L"ArmEff");
        if (number % 2 == 0) parent = AddNull(chain.GetEffector(), L"Joint");
    }
    EXPECT_NEAR(GlobalOf(RecordOf(parent))[3][0], 1.0, 1e-6);
    ExpectNothingLeft();
}

TEST_F(LargeScenes, HoldManyPropertiesAndTheirNames) {
    const Zelk::Model model = AddModel(L"Skel");
    Zelk::Null null = AddNull(model, L"Hips");
    for (std::uint32_t number = 0; number < kMany / 10; ++number)
        ASSERT_TRUE(AddProperty(number % 2 == 0 ? Zelk::SceneItem(null.GetRef())
                                                : Zelk::SceneItem(model.GetRef()),
                                L"Set")
                        .IsValid());
    EXPECT_EQ(Delete(L"Skel.Hips.Set4999"), Zelk::status::kOk);
    EXPECT_EQ(Delete(L"Set"), Zelk::status::kOk);
    EXPECT_EQ(RecordOf(null).Properties().size() + RecordOf(model).Properties().size(),
              kMany / 10 - 2);
    ExpectNothingLeft();
}

}  // namespace
