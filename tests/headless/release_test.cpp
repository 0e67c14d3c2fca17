// Scenes that were moved out of the session: several exist at once, and nothing changes them.
#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "headless/evaluation.h"
#include "host/automation.h"
#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using headless::MotionEvaluator;
using headless::Recording;
using headless::Session;
using headless::Transform;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

using Release = HostScene;

// A model of nulls and a chain with a motion, an applied pose, a clip, a group and a property.
struct Built {
    Zelk::Model model;
    Zelk::Null hips;
    Zelk::ChainRoot chain;
    Zelk::ActionSource motion;
    Zelk::Group group;
    Zelk::CustomProperty property;
};
Built Build(const wchar_t* name, double x) {
    Built built;
    built.model = AddModel(name);
    built.hips = AddNull(built.model, L"Hips");
    Place(built.hips, x, 2, 3);
    built.chain = AddChain(built.hips, {x, 2, 3}, {x, 5, 3}, L"Leg");
    AddBone(built.chain, {x, 7, 4}, L"Shin");
    AddNull(built.chain.GetEffector(), L"Foot");
    std::vector<double> times;
    std::vector<double> values;
    for (int key = 1; key <= 20; ++key) {
        times.push_back(key);
        values.push_back(x + 3.0 * key);
    }
    built.motion = AddAction(built.model, L"Walk",
                             {{L"Hips.kine.local.posx", times, values},
                              {L"Hips.kine.local.roty", times, values},
                              {L"Shin.bone.length", times, values},
                              {L"Shin.kine.local.rotz", times, values},
                              {L"kine.local.posy", {}, {x}}});
    Apply(built.motion, built.model);
    AddClip(built.model, built.motion);
    built.group = AddGroup(built.model, L"Group", Refs({built.hips}));
    built.property = AddProperty(built.hips, L"Props");
    return built;
}

// Every number and name that can be read from a scene, in one row.
struct Reading {
    std::vector<double> numbers;
    std::vector<std::wstring> names;
    bool operator==(const Reading&) const = default;
};
void ReadFrame(const MotionEvaluator& evaluator, double frame, std::vector<double>& numbers) {
    std::vector<Transform> transforms(evaluator.Objects().size());
    const auto add = [&] {
        for (const Transform& transform : transforms) {
            for (const auto& axis : transform.axes)
                numbers.insert(numbers.end(), std::begin(axis), std::end(axis));
            numbers.insert(numbers.end(), std::begin(transform.origin), std::end(transform.origin));
        }
    };
    evaluator.Evaluate(frame, transforms);
    add();
    evaluator.EvaluateLocal(frame, transforms);
    add();
}
Reading Read(const headless::Scene& scene) {
    Reading reading;
    for (const headless::Object* const object : scene.Objects()) {
        reading.names.push_back(Wide(object->name));
        reading.names.push_back(Wide(scene.FullName(object->id)));
        EXPECT_EQ(scene.FindObject(object->id), object);
        for (const auto& property : object->Properties())
            reading.names.push_back(Wide(scene.FullName(property->id)));
    }
    for (const headless::Object* const model : scene.Models()) {
        for (const auto& group : model->modelData->groups)
            reading.names.push_back(Wide(scene.FullName(group->id)));
        for (const auto& action : model->modelData->actions) {
            EXPECT_EQ(scene.FindAction(action->id), action.get());
            for (const headless::ActionItem& item : action->items) {
                reading.names.push_back(Wide(item.Target()));
                EXPECT_EQ(scene.ResolveTarget(*model, item).object,
                          scene.ResolveTarget(*model, item.Target()).object);
            }
            reading.numbers.push_back(headless::SecondsPerFrame(*action));
            const MotionEvaluator evaluator(scene, *model, action.get());
            for (double frame = 0.0; frame < 22.0; frame += 0.5)
                ReadFrame(evaluator, frame, reading.numbers);
        }
    }
    return reading;
}

TEST_F(Release, MovesOutEverythingThatTheSessionHeld) {
    Session& session = Session::Current();
    const Built built = Build(L"Skel", 1);
    session.SetInteractive(true);
    Zelk::UIToolkit toolkit;
    Zelk::UIToolkit::Create(toolkit);
    toolkit.GetProgressBar().PutValue(7);
    Zelk::AutomationApplication().LogMessage(L"a");
    const std::wstring text = SceneText();
    const headless::Object* const hips = &RecordOf(built.hips);
    const std::size_t commands = session.Commands().size();
    ASSERT_GT(commands, 0u);

    const Recording released = session.Release();
    ASSERT_NE(released.scene, nullptr);
    EXPECT_THAT(released.scene->Models(), SizeIs(1));
    EXPECT_EQ(released.scene->FindObject(built.hips.GetRef().Object()), hips) << "not copied";
    EXPECT_THAT(released.log, SizeIs(1));
    EXPECT_THAT(released.bar, SizeIs(1));
    EXPECT_THAT(released.commands, SizeIs(commands));

    EXPECT_THAT(session.GetScene().Objects(), IsEmpty());
    EXPECT_THAT(session.GetScene().Models(), IsEmpty());
    EXPECT_THAT(session.Log(), IsEmpty());
    EXPECT_THAT(session.Bar(), IsEmpty());
    EXPECT_THAT(session.Commands(), IsEmpty());
    EXPECT_NE(SceneText(), text);
}

TEST_F(Release, LeavesListenersAndTheButtonAsTheyAre) {
    Session& session = Session::Current();
    session.SetInteractive(true);
    int heard = 0;
    session.OnLog([&](const headless::LogLine&) { ++heard; });
    session.PressCancel();
    session.Release();
    Zelk::AutomationApplication().LogMessage(L"a");
    EXPECT_EQ(heard, 1);
    Zelk::UIToolkit toolkit;
    ASSERT_TRUE(Zelk::UIToolkit::Create(toolkit).Succeeded());
    std::int16_t pressed = 0;
    toolkit.GetProgressBar().GetCancelPressed(pressed);
    EXPECT_EQ(pressed, Zelk::kAutomationTrue);
}

TEST_F(Release, GivesEveryReleaseASceneOfItsOwn) {
    Session& session = Session::Current();
    const Recording empty = session.Release();
    EXPECT_THAT(empty.scene->Objects(), IsEmpty());
    Build(L"Skel", 1);
    const Recording first = session.Release();
    const Reading ofFirst = Read(*first.scene);
    Build(L"Skel", 50);
    Build(L"Other", 60);
    const Recording second = session.Release();
    const Reading ofSecond = Read(*second.scene);
    session.Reset();
    Build(L"Third", 9);

    EXPECT_THAT(first.scene->Models(), SizeIs(1));
    EXPECT_THAT(second.scene->Models(), SizeIs(2));
    EXPECT_EQ(Wide(first.scene->Models()[0]->name), L"Skel");
    EXPECT_EQ(Wide(second.scene->Models()[0]->name), L"Skel") << "names are unique in a scene";
    EXPECT_NE(ofFirst, ofSecond);
    EXPECT_EQ(Read(*first.scene), ofFirst);
    EXPECT_EQ(Read(*second.scene), ofSecond);
    EXPECT_EQ(first.scene->Models()[0]->modelData->attached->name, Zelk::CString(L"Walk"));
}

TEST_F(Release, NeverUsesAnIdAgain) {
    Session& session = Session::Current();
    Build(L"Skel", 1);
    const Recording first = session.Release();
    Build(L"Skel", 1);
    const Recording second = session.Release();
    const std::uint32_t last = first.scene->Objects().back()->id;
    EXPECT_GT(second.scene->Objects().front()->id, last);
    EXPECT_EQ(second.scene->FindObject(last), nullptr);
    EXPECT_EQ(first.scene->FindObject(second.scene->Objects().front()->id), nullptr);
    EXPECT_TRUE(second.scene->FullName(last).IsEmpty());
    session.Reset();
    EXPECT_GT(AddModel(L"Skel").GetRef().Object(), second.scene->Objects().back()->id);
}

TEST_F(Release, MakesHandlesToReleasedObjectsInvalid) {
    Session& session = Session::Current();
    Zelk::Model root = SceneRoot();
    Built built = Build(L"Skel", 1);
    Scratch scratch = AddScratch(built.hips);
    const Zelk::Parameter channel(
        built.hips.GetKinematics().GetLocal().GetParameters().GetItem(L"posx"));
    const Recording released = session.Release();
    const Reading before = Read(*released.scene);

    const Zelk::CBase handles[] = {built.model,       built.hips,  built.chain,
                                   built.motion,      built.group, built.property,
                                   scratch.parameter, channel,     scratch.curve};
    for (const Zelk::CBase& handle : handles)
        EXPECT_FALSE(handle.IsValid()) << handle.GetRef().Object();
    EXPECT_EQ(NameOf(built.hips), L"");
    built.hips.PutName(L"Renamed");
    EXPECT_FALSE(AddNull(built.hips, L"Child").IsValid());
    EXPECT_FALSE(Put(built.hips, L"posx", 99).Succeeded());
    EXPECT_FALSE(SetKeys(scratch.curve, {1}, {1}).Succeeded());
    EXPECT_NE(Apply(built.motion, built.model), Zelk::status::kOk);
    EXPECT_NE(Delete(L"Skel"), Zelk::status::kOk);
    EXPECT_TRUE(root.IsValid()) << "the root is that of the session's scene";
    EXPECT_EQ(Read(*released.scene), before);

    // An object of the released scene cannot be moved under a new object.
    Zelk::Model model = AddModel(L"Skel");
    EXPECT_EQ(NameOf(model), L"Skel");
    EXPECT_FALSE(model.AddChild(Refs({built.hips})).Succeeded());
    EXPECT_EQ(Read(*released.scene), before);
}

TEST_F(Release, KeepsTheSceneWhenItsSessionIsReset) {
    Build(L"Skel", 1);
    Recording released = Session::Current().Release();
    const Reading before = Read(*released.scene);
    Session::Current().Reset();
    const Recording moved = std::move(released);
    EXPECT_EQ(Read(*moved.scene), before);
}

TEST_F(Release, LetsThreadsReadASceneWhileTheNextIsMade) {
    constexpr int kReaders = 8;
    Build(L"Skel", 1);
    const Recording released = Session::Current().Release();
    const Reading expected = Read(*released.scene);
    const headless::Object& model = *released.scene->Models()[0];
    const MotionEvaluator shared(*released.scene, model, model.modelData->actions[0].get());
    std::vector<double> sharedFrame;
    ReadFrame(shared, 7.25, sharedFrame);

    std::atomic<int> waiting = kReaders;
    std::atomic<int> different = 0;
    std::vector<std::thread> readers;
    for (int reader = 0; reader < kReaders; ++reader)
        readers.emplace_back([&] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            for (int round = 0; round < 5; ++round) {
                std::vector<double> frame;
                ReadFrame(shared, 7.25, frame);
                if (Read(*released.scene) != expected || frame != sharedFrame) ++different;
            }
        });
    while (waiting > 0)
        std::this_thread::yield();
    std::vector<Recording> others;
    for (int other = 0; other < 20; ++other) {
        Build(L"Skel", other);
        others.push_back(Session::Current().Release());
    }
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(different, 0);
    EXPECT_EQ(Wide(others.back().scene->Models()[0]->name), L"Skel");
}

}  // namespace
