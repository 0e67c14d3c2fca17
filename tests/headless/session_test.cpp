#include "headless/session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "headless/testing.h"
#include "host/automation.h"
#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using headless::BarEvent;
using headless::Session;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class Sessions : public HostScene {
  protected:
    static Zelk::ProgressBar Bar() {
        Session::Current().SetInteractive(true);
        Zelk::UIToolkit toolkit;
        EXPECT_TRUE(Zelk::UIToolkit::Create(toolkit).Succeeded());
        return toolkit.GetProgressBar();
    }
    static std::int16_t Pressed(const Zelk::ProgressBar& bar) {
        std::int16_t pressed = 99;
        bar.GetCancelPressed(pressed);
        return pressed;
    }
};

TEST_F(Sessions, KeepEveryLineWithItsSeverity) {
    Zelk::Application().LogMessage(L"a", Zelk::zkErrorSeverity);
    Zelk::AutomationApplication().LogMessage(L"b");
    Zelk::Application().LogMessage(L"", Zelk::zkInfoSeverity);
    Zelk::Application().LogMessage(L"a", Zelk::zkWarningSeverity);
    const auto& log = Session::Current().Log();
    ASSERT_THAT(log, SizeIs(4));
    EXPECT_EQ(log[0].severity, 2);
    EXPECT_EQ(Wide(log[0].text), L"a");
    EXPECT_EQ(log[1].severity, std::nullopt) << "the host's default";
    EXPECT_EQ(Wide(log[1].text), L"b");
    EXPECT_EQ(log[2].severity, 8);
    EXPECT_EQ(Wide(log[2].text), L"");
    EXPECT_EQ(log[3].severity, 4);
}

TEST_F(Sessions, HaveABarOnlyIfInteractive) {
    std::int16_t interactive = 55;
    Zelk::AutomationApplication().GetInteractive(interactive);
    EXPECT_EQ(interactive, Zelk::kAutomationFalse);
    Zelk::UIToolkit toolkit;
    EXPECT_FALSE(Zelk::UIToolkit::Create(toolkit).Succeeded());
    EXPECT_FALSE(toolkit.IsValid());
    EXPECT_FALSE(toolkit.GetProgressBar().IsValid());

    const Zelk::ProgressBar bar = Bar();
    EXPECT_TRUE(bar.IsValid());
    Zelk::AutomationApplication().GetInteractive(interactive);
    EXPECT_EQ(interactive, Zelk::kAutomationTrue);
    Session::Current().SetInteractive(false);
    EXPECT_FALSE(bar.IsValid());
    Zelk::ProgressBar(bar).PutValue(3);
    EXPECT_THAT(Session::Current().Bar(), IsEmpty());
}

TEST_F(Sessions, KeepEveryBarEventInOrder) {
    Zelk::ProgressBar bar = Bar();
    bar.PutMinimum(-1);
    bar.PutMaximum(32000);
    bar.PutStep(2);
    bar.PutValue(-2147483647 - 1);
    bar.PutCaption(L"Importing Motion...");
    bar.PutVisible(Zelk::kAutomationTrue);
    bar.PutVisible(Zelk::kAutomationFalse);
    bar.PutVisible(1);
    bar.PutValue(5);
    bar.PutValue(5);
    using Kind = BarEvent::Kind;
    const std::pair<Kind, std::int32_t> kEvents[] = {
        {Kind::Minimum, -1}, {Kind::Maximum, 32000},
        {Kind::Step, 2},     {Kind::Value, -2147483647 - 1},
        {Kind::Caption, 0},  {Kind::Visible, 1},
        {Kind::Visible, 0},  {Kind::Visible, 1},
        {Kind::Value, 5},    {Kind::Value, 5}};
    const auto& events = Session::Current().Bar();
    ASSERT_THAT(events, SizeIs(std::size(kEvents)));
    for (std::size_t index = 0; index < events.size(); ++index) {
        EXPECT_EQ(events[index].kind, kEvents[index].first) << index;
        EXPECT_EQ(events[index].number, kEvents[index].second) << index;
    }
    EXPECT_EQ(Wide(events[4].caption), L"Importing Motion...");
}

TEST_F(Sessions, KeepTheCancelButtonPressed) {
    const Zelk::ProgressBar bar = Bar();
    EXPECT_EQ(Pressed(bar), 0);
    Session::Current().PressCancel();
    EXPECT_EQ(Pressed(bar), Zelk::kAutomationTrue);
    EXPECT_EQ(Pressed(bar), Zelk::kAutomationTrue);
    EXPECT_EQ(headless::CancelPolls(), 3u);
}

TEST_F(Sessions, PressTheCancelButtonAtAPoll) {
    const Zelk::ProgressBar bar = Bar();
    headless::PressCancelAtPoll(3);
    EXPECT_EQ(Pressed(bar), 0);
    EXPECT_EQ(Pressed(bar), 0);
    EXPECT_EQ(Pressed(bar), -1);
    EXPECT_EQ(Pressed(bar), -1) << "and it stays pressed";
    headless::PressCancelAtPoll(0);
    EXPECT_EQ(Pressed(bar), 0);
}

TEST_F(Sessions, CallTheListenerAtEachPollUntilTheButtonIsPressed) {
    const Zelk::ProgressBar bar = Bar();
    int asked = 0;
    bool isCancelled = false;
    Session::Current().OnCancelPoll([&] {
        ++asked;
        return isCancelled;
    });
    EXPECT_EQ(Pressed(bar), 0);
    EXPECT_EQ(Pressed(bar), 0);
    EXPECT_EQ(asked, 2);
    isCancelled = true;
    EXPECT_EQ(Pressed(bar), Zelk::kAutomationTrue);
    isCancelled = false;
    EXPECT_EQ(Pressed(bar), Zelk::kAutomationTrue) << "it stays pressed";
    EXPECT_EQ(asked, 3);
}

TEST_F(Sessions, ReadTheButtonAsPressedWhateverTheListenerSays) {
    const Zelk::ProgressBar bar = Bar();
    Session::Current().OnCancelPoll([] { return false; });
    EXPECT_EQ(Pressed(bar), 0);
    Session::Current().PressCancel();
    EXPECT_EQ(Pressed(bar), Zelk::kAutomationTrue);
}

TEST_F(Sessions, CallNoListenerWithoutABar) {
    const Zelk::ProgressBar bar = Bar();
    Session::Current().OnCancelPoll([] { return true; });
    EXPECT_EQ(Pressed(Zelk::ProgressBar()), 99);
    Session::Current().SetInteractive(false);
    EXPECT_EQ(Pressed(bar), 99);
    Session::Current().SetInteractive(true);
    Session::Current().OnCancelPoll(nullptr);
    EXPECT_EQ(Pressed(bar), 0);
}

TEST_F(Sessions, ReadTheValueThatIsSetForAPressedButton) {
    const Zelk::ProgressBar bar = Bar();
    headless::SetPressedValue(1);
    EXPECT_EQ(Pressed(bar), 0);
    Session::Current().PressCancel();
    EXPECT_EQ(Pressed(bar), 1);
}

TEST_F(Sessions, LeaveTheFlagUnchangedWithoutABar) {
    Session::Current().PressCancel();
    EXPECT_EQ(Pressed(Zelk::ProgressBar()), 99);
    EXPECT_EQ(headless::CancelPolls(), 0u);
}

TEST_F(Sessions, CallListenersAtEachEvent) {
    std::vector<std::wstring> heard;
    Session& session = Session::Current();
    session.OnLog([&](const headless::LogLine& line) {
        heard.push_back(Wide(line.text));
        EXPECT_EQ(session.Log().size(), heard.size());
        if (heard.size() < 3) Zelk::AutomationApplication().LogMessage(L"echo");
    });
    std::vector<std::int32_t> values;
    session.OnBar([&](const BarEvent& event) { values.push_back(event.number); });
    Zelk::AutomationApplication().LogMessage(L"a");
    EXPECT_THAT(heard, ElementsAre(L"a", L"echo", L"echo"));
    Zelk::ProgressBar bar = Bar();
    bar.PutValue(4);
    bar.PutValue(5);
    EXPECT_THAT(values, ElementsAre(4, 5));
    session.OnBar(nullptr);
    session.OnLog(nullptr);
    bar.PutValue(6);
    EXPECT_THAT(values, SizeIs(2));
}

TEST_F(Sessions, AreNewAfterAReset) {
    Session& session = Session::Current();
    const Zelk::Model model = AddModel(L"Skel");
    const std::uint32_t id = model.GetRef().Object();
    const Zelk::Null null = AddNull(model, L"Hips");
    Zelk::ProgressBar bar = Bar();
    bar.PutValue(1);
    Zelk::AutomationApplication().LogMessage(L"a");
    Delete(L"Nobody");
    session.PressCancel();
    headless::SetPressedValue(1);
    int heard = 0;
    session.OnLog([&](const headless::LogLine&) { ++heard; });
    session.OnBar([&](const BarEvent&) { ++heard; });
    session.OnCancelPoll([&] {
        ++heard;
        return true;
    });

    session.Reset();
    EXPECT_THAT(session.Log(), IsEmpty());
    EXPECT_THAT(session.Bar(), IsEmpty());
    EXPECT_THAT(session.Commands(), IsEmpty());
    EXPECT_THAT(session.GetScene().Objects(), IsEmpty());
    EXPECT_THAT(session.GetScene().Models(), IsEmpty());
    EXPECT_FALSE(model.IsValid());
    EXPECT_FALSE(null.IsValid());
    EXPECT_FALSE(bar.IsValid());
    Zelk::AutomationApplication().LogMessage(L"b");
    bar = Bar();
    bar.PutValue(1);
    EXPECT_EQ(heard, 0);
    EXPECT_EQ(Pressed(bar), 0);
    EXPECT_EQ(headless::CancelPolls(), 1u);

    const Zelk::Model again = AddModel(L"Skel");
    EXPECT_EQ(NameOf(again), L"Skel");
    EXPECT_GT(again.GetRef().Object(), id) << "no identity is given out twice";
    EXPECT_FALSE(model.IsValid());
}

}  // namespace
