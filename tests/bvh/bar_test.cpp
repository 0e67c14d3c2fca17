// What whole imports send to the host's progress bar, and what pressing its cancel button does.
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "headless/testing.h"
#include "tests/bvh/importer.h"
#include "tests/bvh/samples.h"
#include "tests/support/core/scene_check.h"

namespace {

using bvh_test::Importer;
using bvh_test::kAllOptions;
using bvh_test::Options;
using headless::Session;
using support::BarLines;
using support::Lines;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// Collects the lines that the host's bar must record. Steps are in units of the caller's range,
// which becomes 0 to 32000 in the host.
class Script {
  public:
    Script() : lines_{"minimum 0", "maximum 32000", "step 1"} {}

    Script& Start(double range) {
        range_ = range;
        position_ = 0;
        lines_.insert(lines_.end(), {"value 0", "caption Importing Motion...", "visible 1"});
        return *this;
    }
    Script& Caption(const std::string& caption) {
        lines_.push_back("caption " + caption);
        return *this;
    }
    Script& Step(double step, int times) {
        for (; times > 0; --times) {
            position_ += step;
            const double value = position_ / range_ * 32000.0 + 0.5;
            lines_.push_back("value " + std::to_string(static_cast<std::int32_t>(value)));
        }
        return *this;
    }
    Lines End() {
        lines_.push_back("visible 0");
        return lines_;
    }

  private:
    Lines lines_;
    double range_ = 0.0;
    double position_ = 0.0;
};

// Adds the lines for building the scene of a section with this number of nodes.
Script& AddBuild(Script& script, int nodes, bool nulls) {
    script.Caption("Converting rotations order...").Step(10, nodes);
    script.Caption("Creating Zelk model...").Step(50, 1);
    if (!nulls) script.Caption("Mapping rotations to bones...").Step(10, nodes);
    return script.Caption("Attaching FCurves...").Step(10, nodes).Caption("Almost done...");
}

class BvhBar : public testing::Test {
  protected:
    void SetUp() override { support::StartSession(true); }
};

TEST_F(BvhBar, RunsToItsEndWithNulls) {
    Importer importer({true});
    ASSERT_EQ(importer.Import(bvh_test::kChain), 0);
    // 18 values, 3 nodes: 18 + 50 + 30 + 30.
    EXPECT_THAT(BarLines(),
                ElementsAre("minimum 0", "maximum 32000", "step 1", "value 0",
                            "caption Importing Motion...", "visible 1", "value 250", "value 500",
                            "value 750", "value 1000", "value 1250", "value 1500", "value 1750",
                            "value 2000", "value 2250", "value 2500", "value 2750", "value 3000",
                            "value 3250", "value 3500", "value 3750", "value 4000", "value 4250",
                            "value 4500", "caption Converting rotations order...", "value 7000",
                            "value 9500", "value 12000", "caption Creating Zelk model...",
                            "value 24500", "caption Attaching FCurves...", "value 27000",
                            "value 29500", "value 32000", "caption Almost done...", "visible 0"));
}

TEST_F(BvhBar, RunsToItsEndWithBones) {
    Importer importer({false});
    ASSERT_EQ(importer.Import(bvh_test::kChain), 0);
    Script script;
    script.Start(18 + 50 + 30 + 30 + 30).Step(1, 18);
    EXPECT_THAT(BarLines(), ElementsAreArray(AddBuild(script, 3, false).End()));
    EXPECT_EQ(*(BarLines().end() - 3), "value 32000");
}

struct LongMotion {
    int channels;
    int frames;
    int steps;  // of the bar while the values are read
};

std::string Motion(int channels, int frames) {
    static constexpr const char* kNames[] = {"Xrotation", "Yrotation", "Zrotation",
                                             "Xposition", "Yposition", "Zposition"};
    std::string text = "HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS " + std::to_string(channels);
    for (int i = 0; i < channels; ++i)
        text += std::string(" ") + kNames[i];
    text += " } MOTION Frames: " + std::to_string(frames) + " Frame Time: 0.01";
    for (int i = 0; i < channels * frames; ++i)
        text += " 1";
    return text;
}

// Up to 99 values there is a step for each value. With n > 99 values there is a step for every n /
// 50 values, rounded down.
TEST_F(BvhBar, TakesFewerThanAHundredStepsForAnyNumberOfValues) {
    for (const auto& [channels, frames, steps] : {LongMotion{1, 1, 1},
                                                  {1, 49, 49},
                                                  {1, 50, 50},
                                                  {1, 99, 99},
                                                  {1, 100, 50},
                                                  {1, 149, 74},
                                                  {3, 50, 50},
                                                  {6, 333, 51},
                                                  {1, 10'000, 50},
                                                  {1, 10'049, 50}}) {
        support::StartSession(true);
        Importer importer({true});
        ASSERT_EQ(importer.Import(Motion(channels, frames)), 0);
        Script script;
        const int values = channels * frames;
        script.Start(std::min(values, 50) + 50 + 20).Step(1, steps);
        EXPECT_THAT(BarLines(), ElementsAreArray(AddBuild(script, 1, true).End())) << values;
        EXPECT_EQ(headless::CancelPolls(), static_cast<unsigned>(steps + 2));
    }
}

TEST_F(BvhBar, StartsAgainWithEachSection) {
    Importer importer({true});
    ASSERT_EQ(importer.Import(bvh_test::kChain + bvh_test::kTree), 0);
    Script script;
    script.Start(18 + 50 + 60).Step(1, 18);
    AddBuild(script, 3, true).Start(18 + 50 + 180).Step(1, 18);
    EXPECT_THAT(BarLines(), ElementsAreArray(AddBuild(script, 9, true).End()));
}

TEST_F(BvhBar, HasNoRangeWithoutAMotion) {
    Importer importer({true});
    ASSERT_EQ(importer.Import("HIERARCHY ROOT A { OFFSET 0 1 0 }"), 0);
    EXPECT_THAT(
        BarLines(),
        ElementsAre("minimum 0", "maximum 32000", "step 1", "caption Converting rotations order...",
                    "value -2147483648", "caption Creating Zelk model...", "value -2147483648",
                    "caption Attaching FCurves...", "value -2147483648", "caption Almost done...",
                    "visible 0"));
}

TEST_F(BvhBar, IsHiddenAfterAFailure) {
    Importer importer({true});
    ASSERT_LT(importer.Import(bvh_test::kChain.substr(0, bvh_test::kChain.size() - 8)), 0);
    EXPECT_EQ(BarLines()[5], "visible 1");
    EXPECT_EQ(BarLines().back(), "visible 0");
}

TEST_F(BvhBar, IsNotMadeWithoutAFile) {
    Importer importer;
    EXPECT_LT(importer.ImportFile("/nonexistent/walk.bvh"), 0);
    EXPECT_LT(importer.ImportBVH(L"", L"walk").GetCode(), 0);
    EXPECT_THAT(BarLines(), IsEmpty());
}

TEST_F(BvhBar, DoesNotChangeWhatIsImported) {
    std::vector<std::size_t> objects;
    for (const bool interactive : {false, true}) {
        support::StartSession(interactive);
        Importer importer({false});
        EXPECT_EQ(importer.Import(bvh_test::kTree), 0);
        objects.push_back(bvh_test::Scene().Objects().size());
    }
    EXPECT_EQ(objects[0], objects[1]);
}

// --- cancelling ---

std::uint64_t PollsOf(const std::string& text, const Options& options) {
    support::StartSession(true);
    Importer importer(options);
    EXPECT_EQ(importer.Import(text), 0);
    return headless::CancelPolls();
}

// The bar is polled for each value that is read, then for each node, once after the skeleton is
// built and, with bones, for each node again.
TEST_F(BvhBar, IsPolledForEachNodeAndValue) {
    EXPECT_EQ(PollsOf(bvh_test::kChain, {true}), 18u + 3 + 1);
    EXPECT_EQ(PollsOf(bvh_test::kChain, {false}), 18u + 3 + 1 + 3);
    EXPECT_EQ(PollsOf(bvh_test::kTree, {false}), 18u + 9 + 1 + 9);
}

void ExpectCancelled(const Importer& importer, std::int32_t status, std::uint64_t poll,
                     std::uint64_t valuePolls) {
    EXPECT_EQ(importer.Message(), "User cancelled command");
    EXPECT_EQ(importer.GetModelsCount(), 0u);
    // A cancelled parse is a failed parse and has a line; a later cancellation has its own status.
    EXPECT_EQ(importer.WasParsing(), poll <= valuePolls);
    EXPECT_EQ(support::StatusText(status), poll <= valuePolls ? "0x80004005" : "0x800704C7");
    EXPECT_THAT(importer.Nodes(), IsEmpty());
    EXPECT_EQ(BarLines().back(), "visible 0");
    EXPECT_THAT(support::SceneProblems(false), IsEmpty());
}

TEST_F(BvhBar, CancelsAtEachPoll) {
    for (const Options& options : kAllOptions) {
        for (const std::string& text : {bvh_test::kChain, bvh_test::kTree}) {
            const std::uint64_t polls = PollsOf(text, options);
            const std::uint64_t nodes = text == bvh_test::kTree ? 9 : 3;
            for (std::uint64_t poll = 1; poll <= polls; ++poll) {
                support::StartSession(true);
                headless::PressCancelAtPoll(poll);
                Importer importer(options);
                ExpectCancelled(importer, importer.Import(text), poll, 18);
                // Nothing is rolled back: what was made before the button was pressed stays in the
                // scene.
                const bool built = poll > 18 + nodes;
                EXPECT_EQ(bvh_test::Scene().Models().size(), built ? 1u : 0u);
                EXPECT_EQ(importer.GetLastModel().IsValid(), built);
            }
            support::StartSession(true);
            headless::PressCancelAtPoll(polls + 1);
            Importer importer(options);
            EXPECT_EQ(importer.Import(text), 0);
        }
    }
}

TEST_F(BvhBar, CancelsASecondSectionAndKeepsTheFirst) {
    const std::string text = bvh_test::kChain + bvh_test::kTree;
    const std::uint64_t first = PollsOf(bvh_test::kChain, {true});
    const std::uint64_t all = PollsOf(text, {true});
    for (std::uint64_t poll = first + 1; poll <= all; ++poll) {
        support::StartSession(true);
        headless::PressCancelAtPoll(poll);
        Importer importer({true});
        EXPECT_LT(importer.Import(text), 0);
        EXPECT_EQ(importer.Message(), "User cancelled command");
        EXPECT_EQ(importer.GetModelsCount(), 1u);
        EXPECT_EQ(support::Utf8(importer.GetLastModel().GetName()), "walk");
        EXPECT_THAT(support::SceneProblems(false), IsEmpty());
    }
}

TEST_F(BvhBar, CancelsWhenTheListenerReturnsTrue) {
    const std::uint64_t polls = PollsOf(bvh_test::kChain, {true});
    for (std::uint64_t poll = 1; poll <= polls; ++poll) {
        support::StartSession(true);
        std::uint64_t asked = 0;
        Session::Current().OnCancelPoll([&] { return ++asked == poll; });
        Importer importer({true});
        ExpectCancelled(importer, importer.Import(bvh_test::kChain), poll, 18);
        EXPECT_EQ(asked, poll);
    }
    Session::Current().Reset();
}

TEST_F(BvhBar, CancelRecordsTheLineOfTheLastValue) {
    headless::PressCancelAtPoll(12);
    Importer importer({true});
    EXPECT_LT(importer.Import(bvh_test::kChain), 0);
    // The third value of the second frame: line 19 of the file, counted from 0.
    EXPECT_EQ(importer.Line(), 19u);
}

TEST_F(BvhBar, IgnoresACancelFlagThatReadsOne) {
    headless::SetPressedValue(1);
    Session::Current().PressCancel();
    Importer importer({false});
    EXPECT_EQ(importer.Import(bvh_test::kChain), 0);
}

}  // namespace
