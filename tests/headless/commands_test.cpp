#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ostream>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

class Commands : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        other = AddModel(L"Other");
        hips = AddNull(model, L"Hips");
        AddNull(other, L"Hips");
        pose = AddAction(model, L"Pose",
                         {{L"Hips.kine.local.posx", {}, {5}},
                          {L"Nobody.kine.local.posx", {}, {6}},
                          {L"Hips.bone.length", {}, {7}},
                          {L"Hips.kine.local.rotz", {}, {90}},
                          {L"kine.local.posy", {}, {8}}});
        motion = AddAction(model, L"Walk", {{L"Hips.kine.local.posx", {1, 2}, {3, 4}}});
        dead = AddModel(L"Dead");
        deadAction = dead.AddActionSource(L"Dead");
        Delete(L"Dead");
    }

    Zelk::Model model;
    Zelk::Model other;
    Zelk::Null hips;
    Zelk::ActionSource pose;
    Zelk::ActionSource motion;
    Zelk::Model dead;
    Zelk::ActionSource deadAction;
};

TEST_F(Commands, ApplyActionSetsTheStaticValues) {
    EXPECT_EQ(Apply(pose, model), Zelk::status::kOk);
    EXPECT_THAT(RecordOf(hips).local, ElementsAre(5, 0, 0, 0, 0, 90));
    EXPECT_THAT(RecordOf(model).local, ElementsAre(0, 8, 0, 0, 0, 0));
    EXPECT_EQ(RecordOf(model).modelData->attached, nullptr) << "it has no curves";
}

TEST_F(Commands, ApplyActionAttachesTheCurvesAndLeavesTheState) {
    EXPECT_EQ(Apply(motion, model), Zelk::status::kOk);
    EXPECT_EQ(RecordOf(model).modelData->attached, &RecordOf(motion));
    EXPECT_EQ(Get(hips, L"posx"), 0.0);
    EXPECT_EQ(Apply(pose, model), Zelk::status::kOk);
    EXPECT_EQ(RecordOf(model).modelData->attached, &RecordOf(motion)) << "values replace no curves";
    const Zelk::ActionSource second = AddAction(model, L"Run", {{L"kine.local.posx", {1}, {1}}});
    EXPECT_EQ(Apply(second, model), Zelk::status::kOk);
    EXPECT_EQ(RecordOf(model).modelData->attached, &RecordOf(second));
}

TEST_F(Commands, ApplyActionUsesTheLastOfTwoValues) {
    Zelk::ActionSource twice = model.AddActionSource(L"Twice");
    twice.AddSourceItem(L"Hips.kine.local.posx", 1.0, true);
    twice.AddSourceItem(L"Hips.kine.local.posx", 2.0, true);
    twice.AddSourceItem(L"Hips.kine.local.posx", 3.0, false);
    EXPECT_EQ(Apply(twice, model), Zelk::status::kOk);
    EXPECT_EQ(Get(hips, L"posx"), 2.0) << "an inactive item does nothing";
}

TEST_F(Commands, ApplyActionAcceptsAnotherModelsAction) {
    EXPECT_EQ(Apply(pose, other), Zelk::status::kOk);
    EXPECT_EQ(Get(hips, L"posx"), 0.0);
    EXPECT_EQ(RecordOf(other).firstChild->local[0], 5.0);
}

TEST_F(Commands, AddClipPutsTheMotionIntoTheMixer) {
    EXPECT_EQ(AddClip(model, motion), Zelk::status::kOk);
    EXPECT_EQ(Command(L"AddClip", {model.GetRef(), pose.GetRef()}), Zelk::status::kOk);
    ASSERT_THAT(RecordOf(model).modelData->clips, SizeIs(2));
    EXPECT_EQ(RecordOf(model).modelData->clips[0].source, motion.GetRef().Object());
    EXPECT_EQ(Wide(RecordOf(model).modelData->clips[1].name), L"Pose_Clip");
}

TEST_F(Commands, GiveNothingBack) {
    Zelk::CValueArray arguments(2);
    arguments[0] = motion.GetRef();
    arguments[1] = model.GetRef();
    Zelk::CValue result(3.0);
    EXPECT_TRUE(Zelk::Application().ExecuteCommand(L"ApplyAction", arguments, result).Succeeded());
    EXPECT_EQ(result.GetType(), Zelk::CValue::Type::Empty);
}

TEST_F(Commands, WithWrongArgumentsFailAndChangeNothing) {
    const Zelk::CValue none;
    const Zelk::CValue ofModel(model.GetRef());
    const Zelk::CValue ofAction(motion.GetRef());
    const Zelk::CValue ofNull(hips.GetRef());
    const Zelk::CValue text(Zelk::CString(L"Skel"));
    const struct {
        const char* name;
        std::vector<Zelk::CValue> modelAndAction;
    } kRows[] = {
        {"Nothing", {}},
        {"OneAlone", {ofModel}},
        {"Empty", {none, none}},
        {"EmptyReferences", {Zelk::CRef(), Zelk::CRef()}},
        {"NoAction", {ofModel, none}},
        {"NoModel", {none, ofAction}},
        {"TheWrongWayRound", {ofAction, ofModel}},
        {"TwoModels", {ofModel, ofModel}},
        {"TwoActions", {ofAction, ofAction}},
        {"ANullForAModel", {ofNull, ofAction}},
        {"ATextForAModel", {text, ofAction}},
        {"ANumberForAnAction", {ofModel, 1.0}},
        {"ADeletedModel", {dead.GetRef(), ofAction}},
        {"ADeletedAction", {ofModel, deadAction.GetRef()}},
        {"APartOfAnAction", {ofModel, Zelk::CRef(motion.GetRef().Object(), 1)}},
        {"APartOfAModel", {Zelk::CRef(model.GetRef().Object(), 1), ofAction}},
        {"MoreThanEmptyOnes", {ofModel, ofAction, 1.0}},
    };
    const std::wstring before = SceneText();
    for (const auto& row : kRows) {
        std::vector<Zelk::CValue> turned = row.modelAndAction;
        if (turned.size() > 1) std::swap(turned[0], turned[1]);
        EXPECT_EQ(Command(L"AddClip", row.modelAndAction), Zelk::status::kInvalidArgument)
            << row.name;
        EXPECT_EQ(Command(L"ApplyAction", turned), Zelk::status::kInvalidArgument) << row.name;
        EXPECT_EQ(SceneText(), before) << row.name;
    }
}

TEST_F(Commands, OfOtherNamesFail) {
    const std::wstring before = SceneText();
    for (const wchar_t* name : {L"", L"addclip", L"AddClip ", L"DeleteAll", L"SaveScene"})
        EXPECT_EQ(Command(name, {model.GetRef(), motion.GetRef()}), Zelk::status::kFail) << name;
    EXPECT_EQ(SceneText(), before);
}

TEST_F(Commands, AreRecordedWithTheirArguments) {
    using Argument = headless::CommandRecord::Argument;
    const Zelk::CRef rotation = hips.GetKinematics().GetLocal().GetParameters()[3];
    const std::size_t before = headless::Session::Current().Commands().size();
    Command(L"AddClip", {model.GetRef(), motion.GetRef(), {}});
    Command(L"DeleteObj", {Zelk::CString(L"Skel.Hips")});
    Command(L"Unknown", {1.5, 7, Zelk::CRef(), hips.GetRef(), rotation});
    Command(L"DeleteObj", {});
    const auto& commands = headless::Session::Current().Commands();
    ASSERT_EQ(commands.size(), before + 4);
    const auto* record = &commands[before];
    const auto text = [](const Argument& argument) {
        return Wide(std::get<Zelk::CString>(argument));
    };
    EXPECT_EQ(Wide(record->name), L"AddClip");
    EXPECT_EQ(record->status, Zelk::status::kOk);
    ASSERT_THAT(record->arguments, SizeIs(3));
    EXPECT_EQ(text(record->arguments[0]), L"Skel");
    EXPECT_EQ(text(record->arguments[1]), L"Skel.Walk");
    EXPECT_TRUE(std::holds_alternative<std::monostate>(record->arguments[2]));
    ++record;
    EXPECT_EQ(text(record->arguments.at(0)), L"Skel.Hips");
    ++record;
    EXPECT_EQ(record->status, Zelk::status::kFail);
    ASSERT_THAT(record->arguments, SizeIs(5));
    EXPECT_EQ(std::get<double>(record->arguments[0]), 1.5);
    EXPECT_EQ(std::get<std::int32_t>(record->arguments[1]), 7);
    for (const std::size_t empty : {2u, 3u, 4u})
        EXPECT_TRUE(std::holds_alternative<std::monostate>(record->arguments[empty])) << empty;
    ++record;
    EXPECT_EQ(record->status, Zelk::status::kInvalidArgument);
    EXPECT_THAT(record->arguments, SizeIs(0));
}

TEST_F(Commands, RecordTheNamesThatTheirArgumentsHadBefore) {
    Command(L"DeleteObj", {Zelk::CString(L"Skel"), model.GetRef()});
    const headless::CommandRecord& record = headless::Session::Current().Commands().back();
    EXPECT_EQ(record.status, Zelk::status::kOk);
    EXPECT_EQ(Wide(std::get<Zelk::CString>(record.arguments.at(1))), L"Skel");
    EXPECT_FALSE(model.IsValid());
}

}  // namespace
