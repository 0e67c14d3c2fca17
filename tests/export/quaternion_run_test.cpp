// Compares the choice of quaternions, in blocks and in parts, with one that goes frame by frame.
#include "export/quaternion_run.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace quaternion_run_test {

using exporters::QuaternionRun;
using math::kPoseLanes;
using math::PoseLanes;
using Value = QuaternionRun::Value;

double Cosine(const Value& a, const Value& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2] + a[3] * b[3];
}

Value Negative(const Value& q) {
    return {-q[0], -q[1], -q[2], -q[3]};
}

// The plain way, for quaternions that have w != 0.
std::vector<Value> Plain(std::vector<Value> run) {
    for (std::size_t frame = 0; frame < run.size(); ++frame) {
        if (run[frame][3] < 0.0) run[frame] = Negative(run[frame]);
        if (frame > 0 && Cosine(run[frame], run[frame - 1]) < 0.0)
            run[frame] = Negative(run[frame]);
    }
    return run;
}

// Passes the frames from `first` to `end` - 1 through a run, in blocks.
QuaternionRun Continued(std::vector<Value>& values, std::size_t first, std::size_t end,
                        QuaternionRun run = {}) {
    for (; first < end; first += kPoseLanes) {
        const std::size_t count = std::min(kPoseLanes, end - first);
        PoseLanes pose = {};
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            for (std::size_t part = 0; part < 4; ++part)
                pose.rotation[part][lane] = values[first + std::min(lane, count - 1)][part];
        run.Continue(pose, count);
        for (std::size_t lane = 0; lane < count; ++lane)
            for (std::size_t part = 0; part < 4; ++part)
                values[first + lane][part] = pose.rotation[part][lane];
    }
    return run;
}

// Quaternions that jump and have any sign. Some are at right angles to the one before.
std::vector<Value> SomeValues(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Value> values;
    for (std::size_t frame = 0; frame < count; ++frame) {
        Value q = {0.5, 0.5, 0.5, 0.5};
        for (double& part : q)
            if (random() % 2) part = -part;
        values.push_back(q);
    }
    return values;
}

TEST(QuaternionRun, ChoosesLikeThePlainWay) {
    for (const std::size_t count : {std::size_t{1}, std::size_t{5}, kPoseLanes, std::size_t{1000}})
        for (unsigned seed = 0; seed < 20; ++seed) {
            std::vector<Value> values = SomeValues(count, seed);
            const std::vector<Value> plain = Plain(values);
            Continued(values, 0, count);
            EXPECT_EQ(values, plain) << count << " seed " << seed;
        }
}

// Several blocks. With every other seed, no frame is at a right angle to the one before it.
std::vector<Value> ManyValues(unsigned seed) {
    std::vector<Value> values = SomeValues(6 * kPoseLanes + 9, seed);
    if (seed % 2)
        for (std::size_t frame = 1; frame < values.size(); ++frame)
            values[frame] = seed % 3 ? Negative(values[frame - 1]) : values[0];
    return values;
}

TEST(QuaternionRun, JoinsParts) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::vector<Value> values = ManyValues(seed);
        const std::vector<Value> plain = Plain(values);
        const std::size_t ends[] = {2 * kPoseLanes, 3 * kPoseLanes, 5 * kPoseLanes, values.size()};
        std::vector<QuaternionRun> runs;
        std::size_t first = 0;
        for (const std::size_t end : ends) {
            // The quaternions of a part may have any sign before they are joined.
            runs.push_back(Continued(values, first, end));
            first = end;
        }
        const std::vector<std::size_t> negated = QuaternionRun::Join(runs);
        first = 0;
        for (std::size_t part = 0; part < runs.size(); ++part) {
            for (std::size_t frame = first; frame < first + negated[part]; ++frame)
                values[frame] = Negative(values[frame]);
            first = ends[part];
        }
        EXPECT_EQ(values, plain) << seed;
    }
}

TEST(QuaternionRun, FollowsTheOneBefore) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        std::vector<Value> values = ManyValues(seed);
        const std::vector<Value> plain = Plain(values);
        QuaternionRun before;
        for (std::size_t first = 0; first < values.size(); first += kPoseLanes) {
            const std::size_t end = std::min(first + kPoseLanes, values.size());
            QuaternionRun run = Continued(values, first, end);
            const std::size_t negated = run.Follow(before);
            for (std::size_t frame = first; frame < first + negated; ++frame)
                values[frame] = Negative(values[frame]);
            before = run;
        }
        EXPECT_EQ(values, plain) << seed;
    }
}

TEST(QuaternionRun, BeginsNearTheValueBefore) {
    std::vector<Value> values = {{0.6, 0.0, 0.0, 0.8}, {-0.6, 0.0, 0.0, -0.8}};
    Continued(values, 0, 2, QuaternionRun({0.0, 0.0, 0.0, -1.0}));
    EXPECT_EQ(values[0], (Value{-0.6, 0.0, 0.0, -0.8}));
    EXPECT_EQ(values[1], values[0]);
}

struct HalfTurnRow {
    Value given;
    Value chosen;
};

// If w is 0, the component with the largest magnitude decides.
const HalfTurnRow kHalfTurns[] = {
    {{1, 0, 0, 0}, {1, 0, 0, 0}},           {{-1, 0, 0, 0}, {1, 0, 0, 0}},
    {{0.6, -0.8, 0, 0}, {-0.6, 0.8, 0, 0}}, {{0, -0.6, 0.8, 0}, {0, -0.6, 0.8, 0}},
    {{0, 0, -1, -0.0}, {0, 0, 1, 0.0}},     {{-0.6, 0, 0.8, 1e-300}, {-0.6, 0, 0.8, 1e-300}},
};

TEST(QuaternionRun, ChoosesHalfTurns) {
    for (const HalfTurnRow& row : kHalfTurns) {
        std::vector<Value> values = {row.given};
        Continued(values, 0, 1);
        EXPECT_EQ(values.front(), row.chosen);
    }
}

}  // namespace quaternion_run_test
