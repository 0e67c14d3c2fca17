// What the parser asks its monitor and reports to it while it runs, without an importer.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/bvh/samples.h"
#include "tests/support/core/session_text.h"
#include "tests/support/parsed_bvh.h"

namespace {

// Counts polls and steps. Cancels at poll `cancelAt`, counted from 1; 0 never cancels.
class Monitor : public ParseMonitor {
  public:
    explicit Monitor(int cancelAt = 0) : cancelAt_(cancelAt) {}
    bool IsCancelled() override { return ++polls == cancelAt_; }
    void Advance(unsigned int steps) override { advanced += steps; }
    void BeginValues() override { pollsBeforeValues.push_back(polls); }

    int polls = 0;
    unsigned int advanced = 0;
    std::vector<int> pollsBeforeValues;

  private:
    int cancelAt_;
};

// The parser's status and the error that it recorded.
struct Parsed {
    std::int32_t status = 0;
    std::wstring message;
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

Parsed Parse(const std::string& text, ParseMonitor& monitor) {
    CStringFile file;
    EXPECT_TRUE(file.ReadMemory(text));
    MocapSkeleton skeleton;
    FileAllowances allowances;
    BvhParser parser(file, skeleton, allowances, monitor);
    file.GetNextString();
    Parsed parsed{parser.ParseHierarchy(nullptr), {}, 0, 0};
    if (parsed.status == 0) parsed.status = parser.ParseMotion();
    parsed.message = parser.LastError().message;
    parsed.line = parser.LastError().line;
    parsed.column = parser.LastError().column;
    return parsed;
}

// A root with one channel and `count` frames. Frame i, counted from 1, is on line 8 + i, counted
// from 0.
std::string Frames(int count) {
    std::string text =
        "HIERARCHY\nROOT A\n{\nOFFSET 0 1 0\nCHANNELS 1 Xrotation\n}\nMOTION\nFrames: " +
        std::to_string(count) + "\nFrame Time: 0.1\n";
    for (int i = 0; i < count; ++i)
        text += "1.5\n";
    return text;
}

struct PollRow {
    const char* name;
    int frames;
    int polls;
};
void PrintTo(const PollRow& row, std::ostream* out) {
    *out << row.name;
}
const PollRow kPolls[] = {
    {"NoFrame", 0, 0},          {"OneFrame", 1, 1},
    {"EachValue", 99, 99},      {"EachSecondValue", 100, 50},
    {"StepOfTwo", 149, 74},     {"StepOfThree", 150, 50},
    {"StepOfTwenty", 1000, 50}, {"StepOfTwentyWithARest", 1049, 52},
};

class BvhPolls : public testing::TestWithParam<PollRow> {};

TEST_P(BvhPolls, AreFewerThanAHundredForAnyNumberOfValues) {
    Monitor monitor;
    EXPECT_EQ(Parse(Frames(GetParam().frames), monitor).status, 0);
    EXPECT_EQ(monitor.polls, GetParam().polls);
    EXPECT_EQ(monitor.advanced, static_cast<unsigned>(GetParam().polls));
    EXPECT_EQ(monitor.pollsBeforeValues, std::vector<int>{0});
}

TEST_P(BvhPolls, CanEachCancelTheParser) {
    const int values = GetParam().frames;
    const int step = values > 99 ? values / 50 : 1;
    for (int poll = 1; poll <= GetParam().polls; ++poll) {
        Monitor monitor(poll);
        const Parsed parsed = Parse(Frames(values), monitor);
        EXPECT_EQ(support::StatusText(parsed.status), "0x800704C7");
        EXPECT_EQ(parsed.message, L"User cancelled command");
        EXPECT_EQ(parsed.line, static_cast<unsigned>(8 + poll * step));
        EXPECT_EQ(parsed.column, 3u);
        EXPECT_EQ(monitor.advanced, static_cast<unsigned>(poll - 1));
    }
}

INSTANTIATE_TEST_SUITE_P(, BvhPolls, testing::ValuesIn(kPolls),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(BvhMonitor, IsToldThatValuesBeginWhenTheCountsAreKnown) {
    class CountsAtValues : public ParseMonitor {
      public:
        explicit CountsAtValues(const MocapSkeleton& parsed) : skeleton(parsed) {}
        void BeginValues() override {
            nodes = skeleton.models.size();
            channels = skeleton.channelCount;
            frames = skeleton.frameCount;
        }
        const MocapSkeleton& skeleton;
        std::size_t nodes = 0;
        std::uint32_t channels = 0, frames = 0;
    };
    CStringFile file;
    ASSERT_TRUE(file.ReadMemory(bvh_test::kChain));
    MocapSkeleton skeleton;
    FileAllowances allowances;
    CountsAtValues monitor(skeleton);
    BvhParser parser(file, skeleton, allowances, monitor);
    file.GetNextString();
    ASSERT_EQ(parser.ParseHierarchy(nullptr), 0);
    ASSERT_EQ(parser.ParseMotion(), 0);
    EXPECT_EQ(monitor.nodes, skeleton.models.size());
    EXPECT_EQ(monitor.channels, 9u);
    EXPECT_EQ(monitor.frames, 2u);
}

TEST(BvhMonitor, IsNotPolledWithoutAMotion) {
    Monitor monitor;
    EXPECT_EQ(Parse("HIERARCHY ROOT A { OFFSET 0 1 0 CHANNELS 1 Xrotation }", monitor).status, 1);
    EXPECT_EQ(monitor.polls, 0);
    EXPECT_TRUE(monitor.pollsBeforeValues.empty());
}

}  // namespace
