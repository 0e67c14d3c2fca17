#include "mocap/progress_bar.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>

#include "headless/session.h"
#include "headless/testing.h"
#include "tests/support/core/session_text.h"

namespace {

using headless::Session;
using support::BarLines;
using support::Lines;
using testing::ElementsAre;
using testing::IsEmpty;

// The events of the host's bar after the three of the constructor.
Lines LinesAfterConstruction() {
    Lines lines = BarLines();
    lines.erase(lines.begin(), lines.begin() + 3);
    return lines;
}

class ProgressBar : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }
};

TEST_F(ProgressBar, SetsTheHostsScaleAndHidesAtTheEnd) {
    {
        const CIFPlugProgressBar bar;
        EXPECT_THAT(BarLines(), ElementsAre("minimum 0", "maximum 32000", "step 1"));
    }
    EXPECT_THAT(BarLines(), ElementsAre("minimum 0", "maximum 32000", "step 1", "visible 0"));
}

TEST_F(ProgressBar, ScalesItsStepsToTheRangeOfTheHost) {
    CIFPlugProgressBar bar;
    bar.SetRange(90);
    for (int i = 0; i < 9; ++i)
        bar.Advance(10);
    EXPECT_THAT(LinesAfterConstruction(),
                ElementsAre("value 3556", "value 7111", "value 10667", "value 14222", "value 17778",
                            "value 21333", "value 24889", "value 28444", "value 32000"));
}

TEST_F(ProgressBar, StartsAgainAtZeroAfterReset) {
    CIFPlugProgressBar bar;
    bar.SetRange(90);
    bar.Advance(10);
    bar.Advance(10);
    bar.Reset();
    bar.Advance(10);
    EXPECT_THAT(LinesAfterConstruction(),
                ElementsAre("value 3556", "value 7111", "value 0", "value 3556"));
}

TEST_F(ProgressBar, AcceptsANewRangeAfterReset) {
    CIFPlugProgressBar bar;
    bar.SetRange(2);
    bar.Reset();
    bar.SetRange(4);
    bar.Advance(1);
    EXPECT_THAT(LinesAfterConstruction(), ElementsAre("value 0", "value 8000"));
}

TEST_F(ProgressBar, ShowsHidesAndSetsItsCaption) {
    CIFPlugProgressBar bar;
    bar.SetText(L"Importing Motion...");
    bar.Show();
    bar.SetText(L"");
    bar.SetText(L"\u6B69\u304F");
    bar.Hide();
    EXPECT_THAT(LinesAfterConstruction(),
                ElementsAre("caption Importing Motion...", "visible 1", "caption ",
                            "caption \xE6\xAD\xA9\xE3\x81\x8F", "visible 0"));
}

struct StepRow {
    const char* name;
    std::uint32_t range;
    std::uint32_t first, second;  // steps
    const char* value;            // after both
};
std::ostream& operator<<(std::ostream& out, const StepRow& row) {
    return out << row.name;
}

const StepRow kStepRows[] = {
    {"RoundsHalfUp", 64000, 0, 1, "value 1"},
    {"RoundsBelowHalfDown", 64001, 0, 1, "value 0"},
    {"NotClamped", 90, 90, 90, "value 64000"},
    {"NoRange", 0, 0, 10, "value -2147483648"},
    {"NoRangeAndNoStep", 0, 0, 0, "value -2147483648"},
    {"TooFarForTheHost", 1, 0, 0xFFFFFFFF, "value -2147483648"},
    {"LastThatFits", 1, 0, 67108, "value 2147456000"},
    {"FirstThatDoesNotFit", 1, 0, 67109, "value -2147483648"},
    {"WrapsAround", 90, 0xFFFFFFFF, 11, "value 3556"},
    {"LargestRange", 0xFFFFFFFF, 0, 0xFFFFFFFF, "value 32000"},
};

class BarValue : public testing::TestWithParam<StepRow> {
  protected:
    void SetUp() override { support::StartSession(true); }
};

TEST_P(BarValue, IsTheScaledPosition) {
    CIFPlugProgressBar bar;
    bar.SetRange(GetParam().range);
    bar.Advance(GetParam().first);
    bar.Advance(GetParam().second);
    EXPECT_EQ(BarLines().back(), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(, BarValue, testing::ValuesIn(kStepRows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ProgressBar, IsCancelledOnlyByMinusOne) {
    for (const auto& [pressed, cancelled] :
         {std::pair<int, bool>{-1, true}, {1, false}, {0, false}, {2, false}, {-2, false}}) {
        support::StartSession(true);
        CIFPlugProgressBar bar;
        headless::SetPressedValue(static_cast<std::int16_t>(pressed));
        EXPECT_FALSE(bar.IsCancelled());
        Session::Current().PressCancel();
        EXPECT_EQ(bar.IsCancelled(), cancelled) << pressed;
    }
}

TEST_F(ProgressBar, AsksTheHostAtEachPoll) {
    CIFPlugProgressBar bar;
    headless::PressCancelAtPoll(3);
    EXPECT_FALSE(bar.IsCancelled());
    EXPECT_FALSE(bar.IsCancelled());
    EXPECT_TRUE(bar.IsCancelled());
    EXPECT_EQ(headless::CancelPolls(), 3u);
}

TEST_F(ProgressBar, HidesWhenAnExceptionIsThrown) {
    try {
        CIFPlugProgressBar bar;
        bar.Show();
        throw std::runtime_error("on the way out");
    } catch (const std::runtime_error&) {
        EXPECT_TRUE(support::BarIsHidden());
    }
    EXPECT_EQ(BarLines().back(), "visible 0");
}

TEST_F(ProgressBar, ThrowsNothingIfTheHostHasNoMemoryToHideIt) {
    {
        const CIFPlugProgressBar bar;
        Session::Current().OnBar([](const headless::BarEvent&) { throw std::bad_alloc(); });
    }
    EXPECT_EQ(BarLines().back(), "visible 0");
}

void UseEverything() {
    CIFPlugProgressBar bar;
    bar.Reset();
    bar.SetRange(10);
    bar.SetText(L"text");
    bar.Show();
    bar.Advance(5);
    bar.Advance(0);
    EXPECT_FALSE(bar.IsCancelled());
    bar.Hide();
}

TEST_F(ProgressBar, DoesNothingInASessionThatIsNotInteractive) {
    support::StartSession(false);
    Session::Current().PressCancel();
    UseEverything();
    EXPECT_THAT(BarLines(), IsEmpty());
}

TEST_F(ProgressBar, DoesNothingIfTheHostGivesNoBar) {
    for (const char* operation : {"Create", "GetProgressBar"}) {
        support::StartSession(true);
        Session::Current().PressCancel();
        headless::FailOperation(operation, 1);
        UseEverything();
        EXPECT_THAT(BarLines(), IsEmpty()) << operation;
    }
}

TEST_F(ProgressBar, AssumesThatAHostThatDoesNotAnswerIsInteractive) {
    headless::FailOperation("GetInteractive", 1);
    const CIFPlugProgressBar bar;
    EXPECT_THAT(BarLines(), ElementsAre("minimum 0", "maximum 32000", "step 1"));
}

TEST_F(ProgressBar, IsNotCancelledByAFlagThatCannotBeRead) {
    CIFPlugProgressBar bar;
    Session::Current().PressCancel();
    headless::FailOperation("GetCancelPressed", 1);
    EXPECT_FALSE(bar.IsCancelled());
    EXPECT_TRUE(bar.IsCancelled());
}

}  // namespace
