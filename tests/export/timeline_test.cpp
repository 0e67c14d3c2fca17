#include "export/timeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

using testing::ElementsAre;

headless::ActionItem CurveAt(std::vector<double> times) {
    auto curve = std::make_unique<headless::Curve>();
    curve->keys.values =
        std::make_shared<headless::NumberArray>(std::vector<double>(times.size(), 0.0));
    curve->keys.times = std::make_shared<headless::NumberArray>(std::move(times));
    return headless::ActionItem(std::move(curve));
}

exporters::Timeline TimelineOf(std::vector<std::vector<double>> curves, double animEnd,
                               const exporters::Options& options = {}, bool even = false) {
    headless::ActionSource motion;
    motion.animEnd = animEnd;
    for (auto& times : curves)
        motion.items.push_back(CurveAt(std::move(times)));
    exporters::Notes notes;
    return exporters::MakeTimeline(headless::Object(), &motion, options, even, notes);
}

TEST(Timeline, HoldsEveryKeyTimeOnceInOrder) {
    const exporters::Timeline timeline = TimelineOf({{3, 1, 2}, {2, 5}}, 5.0);
    EXPECT_THAT(timeline.frames, ElementsAre(1, 2, 3, 5));
    EXPECT_DOUBLE_EQ(timeline.secondsPerFrame, 1.0);
    EXPECT_DOUBLE_EQ(timeline.Seconds(3), 4.0);
}

TEST(Timeline, StartsAtItsFirstFrame) {
    const exporters::Timeline timeline = TimelineOf({{99, 100, 101}}, 101.0 / 30.0);
    EXPECT_DOUBLE_EQ(timeline.Seconds(0), 0.0);
    EXPECT_DOUBLE_EQ(timeline.Seconds(2), 2.0 / 30.0);
}

TEST(Timeline, FillsGapsForFormatsWithOnlyARate) {
    EXPECT_THAT(TimelineOf({{1, 2, 5}}, 5.0, {}, true).frames, ElementsAre(1, 2, 3, 4, 5));
    const exporters::Timeline coarse = TimelineOf({{1, 3, 5}}, 5.0, {}, true);
    EXPECT_THAT(coarse.frames, ElementsAre(1, 3, 5));
    EXPECT_DOUBLE_EQ(exporters::FramesPerSecond(coarse), 0.5);
}

TEST(Timeline, RefusesToFillAHugeGap) {
    EXPECT_THROW(TimelineOf({{1, 2, 2e9}}, 2e9, {}, true), exporters::ExportError);
}

TEST(Timeline, SamplesUpToTheLastKey) {
    exporters::Options options;
    options.resampleTo = 20.0;
    EXPECT_EQ(TimelineOf({{1, 2, 3, 4}}, 0.4, options).frames.size(), 7u);
    options.resampleTo = 3.0;
    EXPECT_EQ(TimelineOf({{1, 11}}, 1.1, options).frames.size(), 4u);
}

TEST(Timeline, KeepsTheFramesInTheRange) {
    const struct {
        const char* name;
        exporters::FrameRange range;
        std::vector<double> frames;  // expected, for keys at -2, 1, 2, 4.5 and 6
    } kRows[] = {
        {"Middle", {1, 2}, {1, 2}},
        {"OneFrame", {2, 2}, {2}},
        {"GapAtBothEnds", {-1, 5}, {1, 2, 4.5}},
        {"BelowZero", {-2, 1}, {-2, 1}},
        {"BeyondTheEnds", {-100, 100}, {-2, 1, 2, 4.5, 6}},
        {"AnyNumber",
         {std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()},
         {-2, 1, 2, 4.5, 6}},
    };
    for (const auto& row : kRows) {
        const exporters::Timeline timeline =
            TimelineOf({{-2, 1, 2, 4.5, 6}}, 3.0, {.frames = row.range});
        EXPECT_EQ(timeline.frames, row.frames) << row.name;
        EXPECT_DOUBLE_EQ(timeline.secondsPerFrame, 0.5) << row.name;
        EXPECT_DOUBLE_EQ(timeline.Seconds(0), 0.0) << row.name;
    }
}

TEST(Timeline, RefusesARangeWithoutFrames) {
    for (const exporters::FrameRange range :
         {exporters::FrameRange{7, 9}, {-9, 0}, {3, 4}, {2, 1}, {6, 1}})
        EXPECT_THROW(TimelineOf({{1, 2, 6}}, 3.0, {.frames = range}), exporters::ExportError)
            << range.first << " to " << range.last;
}

TEST(Timeline, OfARangeIsResampledAndFilledWithinIt) {
    exporters::Options options{.frames = exporters::FrameRange{2, 9}};
    EXPECT_THAT(TimelineOf({{1, 2, 3, 6, 10}}, 1.0, options, true).frames,
                ElementsAre(2, 3, 4, 5, 6, 7, 8, 9));
    EXPECT_THAT(TimelineOf({{1, 2, 3, 6, 10}}, 1.0, options).frames, ElementsAre(2, 3, 6));
    // The range may lie between two keys.
    options.frames = exporters::FrameRange{7, 8};
    EXPECT_THAT(TimelineOf({{1, 2, 3, 6, 10}}, 1.0, options, true).frames, ElementsAre(7, 8));
    options.frames = exporters::FrameRange{2, 9};
    options.resampleTo = 5.0;
    EXPECT_THAT(TimelineOf({{1, 2, 3, 6, 10}}, 1.0, options).frames, ElementsAre(2, 4, 6, 8));
}

TEST(Timeline, HasTheExactRateAndTimesOfItsSamples) {
    for (const std::vector<double>& keys : {std::vector<double>{1, 2, 3, 4}, {3}}) {
        const exporters::Timeline samples =
            TimelineOf({keys}, 4 * 0.033333, {.resampleTo = 24.0}, true);
        EXPECT_EQ(exporters::FramesPerSecond(samples), 24.0);
        EXPECT_EQ(samples.Seconds(2), 2.0 / 24.0);
    }
}

TEST(Timeline, OfAPoseIgnoresTheRange) {
    EXPECT_TRUE(TimelineOf({}, 1.0, {.frames = exporters::FrameRange{1, 2}}).IsPose());
    EXPECT_TRUE(TimelineOf({{1, 2}}, 0.0, {.frames = exporters::FrameRange{5, 6}}).IsPose());
}

TEST(Timeline, IsAPoseWithoutKeysOrRate) {
    EXPECT_TRUE(TimelineOf({}, 1.0).IsPose());
    EXPECT_TRUE(TimelineOf({{}}, 1.0).IsPose());
    EXPECT_TRUE(TimelineOf({{1, 2}}, 0.0).IsPose());
    EXPECT_TRUE(TimelineOf({{1, 2}}, -1.0).IsPose());
}

}  // namespace
