#include "cli/summary.h"

#include <cmath>
#include <gmock/gmock.h>

#include "tests/support/test_scene.h"

namespace {

using testing::HasSubstr;
using testing::Not;

std::string Summary(const cli::SummaryRequest& request) {
    std::string text;
    cli::PrintSummary(TestScene::Get(), request, [&](std::string_view more) { text += more; });
    return text;
}

// Adds a model with two nulls, a base pose, and a motion of four frames.
Zelk::Model AddWalk(const TestScene& scene, const wchar_t* name, double secondsPerFrame,
                    double firstFrame = 1, double thirdValue = 0) {
    Zelk::Model model = scene.AddModel(name);
    Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 0, 0);
    scene.AddNull(hips, L"Hips_End", 0, 1, 0);
    scene.AddAction(model, L"Base", 0.0, {});
    const std::vector<double> times = {firstFrame, firstFrame + 1, firstFrame + 2, firstFrame + 3};
    scene.AddAction(model, L"Motion", times.back() * secondsPerFrame,
                    {{L"Hips.kine.local.rotx", times, {1, 2, thirdValue, 4}},
                     {L"Hips.kine.local.roty", times, {1, 2, 3, 4}}});
    return model;
}

TEST(Summary, NamesWhatWasImported) {
    const TestScene scene;
    AddWalk(scene, L"walk", 1.0 / 60);
    EXPECT_EQ(Summary({.files = {"walk.bvh"}}),
              "walk.bvh: 1 model imported\n"
              "  walk: 1 joint, 1 end site, 2 curves, 4 frames, 0.0666667 seconds, "
              "60 frames per second (from the file)\n");
}

TEST(Summary, NamesTheClip) {
    const TestScene scene;
    Zelk::Model model = AddWalk(scene, L"walk", 0.5);
    Zelk::ActionSource clipped = scene.AddAction(model, L"Second", 1.0, {});
    Zelk::CValueArray arguments(6);
    arguments[0] = Zelk::CValue(model.GetRef());
    arguments[1] = Zelk::CValue(clipped.GetRef());
    Zelk::CValue ignored;
    Zelk::Application().ExecuteCommand(L"AddClip", arguments, ignored);
    EXPECT_THAT(Summary({.files = {"walk.bvh"}}), HasSubstr(", clip Second_Clip\n"));
}

TEST(Summary, NamesBothFilesAndTheAssumedRate) {
    const TestScene scene;
    AddWalk(scene, L"07", 1.0 / 30);
    const std::string text =
        Summary({.files = {"07.asf", "07_01.amc"}, .fileWithoutRate = "07_01.amc"});
    EXPECT_THAT(text, HasSubstr("07.asf + 07_01.amc: 1 model imported"));
    EXPECT_THAT(text, HasSubstr("07_01.amc does not state its rate: 30 frames per second assumed;"
                                " --fps N changes it for exports"));
}

TEST(Summary, UsesTheRateOfTheExports) {
    const TestScene scene;
    AddWalk(scene, L"07", 1.0 / 30);
    const std::string text =
        Summary({.files = {"07.asf"}, .framesPerSecond = 2.0, .fileWithoutRate = "07_01.amc"});
    EXPECT_THAT(text, HasSubstr("4 frames, 2 seconds, 2 frames per second"));
    EXPECT_THAT(text, HasSubstr("30 frames per second assumed; exports use 2\n"));
}

TEST(Summary, CountsATakeFromItsFirstFrame) {
    const TestScene scene;
    AddWalk(scene, L"walk", 0.5, 101);
    EXPECT_THAT(Summary({.files = {"walk.bvh"}}),
                HasSubstr("4 frames, 2 seconds, 2 frames per second"));
}

TEST(Summary, SaysWhereTheRateComesFrom) {
    const TestScene scene;
    AddWalk(scene, L"walk", 0.5);
    const std::pair<take::RateOrigin, const char*> rows[] = {
        {take::RateOrigin::File, "2 frames per second (from the file)\n"},
        {take::RateOrigin::Request, "2 frames per second (from --fps)\n"},
        {take::RateOrigin::Preset, "2 frames per second (from the preset cmu)\n"},
        {take::RateOrigin::Assumed, "2 frames per second (assumed, the file states none)\n"}};
    for (const auto& [origin, text] : rows)
        EXPECT_THAT(Summary({.files = {"a.amc"}, .rateOrigin = origin}), HasSubstr(text));
}

TEST(Summary, CountsOnlyCompleteModels) {
    const TestScene scene;
    AddWalk(scene, L"walk", 0.5);
    scene.AddModel(L"half");
    const std::string text = Summary({.files = {"two.bvh"}, .inPart = true, .models = 1});
    EXPECT_THAT(text, HasSubstr("two.bvh: 1 model imported, then an error\n"));
    EXPECT_THAT(text, Not(HasSubstr("half")));
}

TEST(Summary, CountsValuesThatAreNotFinite) {
    const TestScene scene;
    AddWalk(scene, L"walk", 0.5, 1, std::nan(""));
    EXPECT_THAT(Summary({.files = {"walk.bvh"}}), HasSubstr("1 key value is not finite"));
}

TEST(Summary, SaysWhenThereIsNoMotion) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"07");
    scene.AddNull(model, L"root", 0, 0, 0);
    scene.AddAction(model, L"Base", 0.0, {});
    EXPECT_THAT(Summary({.files = {"07.asf"}}), HasSubstr("  07: 1 joint, no motion\n"));
}

TEST(Summary, SaysWhenTheRateIsUnknown) {
    const TestScene scene;
    AddWalk(scene, L"walk", 0.0);
    EXPECT_THAT(Summary({.files = {"walk.bvh"}}), HasSubstr("4 frames, frame rate unknown"));
}

TEST(Summary, CountsTheJointsOfChainsAsThoseOfNulls) {
    const TestScene scene;
    Zelk::Model model = scene.AddModel(L"walk");
    Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 0, 0);
    Zelk::ChainRoot chain = scene.AddChain(hips, L"HipsRoot");
    // The importers name the bone that leads from the parent joint after that joint.
    Zelk::ChainBone(chain.GetBones()[0]).PutName(L"Hips");
    Zelk::ChainBone bone;
    chain.AddBone({0, 3, 0}, Zelk::zkChainBonePin, L"Knee", bone);
    scene.AddNull(chain.GetEffector(), L"Foot", 0, 0, 0);
    // The joints are Hips, Knee and Foot.
    EXPECT_THAT(Summary({.files = {"walk.bvh"}}), HasSubstr("walk: 3 joints, no motion"));
}

}  // namespace
