// Times the vector loops for poses, each against the plain arithmetic that its test compares it
// with. One item is one pose of one joint.
#include <benchmark/benchmark.h>

#include "math/pose_lanes.h"

namespace {

using math::AngleLanes;
using math::kPoseLanes;
using math::PoseLanes;

AngleLanes SomeAngles() {
    AngleLanes angles;
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane)
            angles.angle[axis][lane] = 17.3 * static_cast<double>(lane + 5 * axis) - 700.0;
    return angles;
}

PoseLanes SomePoses() {
    PoseLanes pose = {};
    math::TurnByAngles(SomeAngles(), pose);
    return pose;
}

void CountPoses(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPoseLanes));
}

void BM_TurnOneByOne(benchmark::State& state) {
    const AngleLanes angles = SomeAngles();
    for ([[maybe_unused]] auto _ : state)
        for (std::size_t lane = 0; lane < kPoseLanes; ++lane) {
            const double degrees[3] = {angles.angle[0][lane], angles.angle[1][lane],
                                       angles.angle[2][lane]};
            double quaternion[4];
            math::TurnByAngles(degrees, quaternion);
            benchmark::DoNotOptimize(quaternion);
        }
    CountPoses(state);
}

void BM_Turn(benchmark::State& state) {
    const AngleLanes angles = SomeAngles();
    PoseLanes pose = {};
    for ([[maybe_unused]] auto _ : state) {
        math::TurnByAngles(angles, pose);
        benchmark::DoNotOptimize(pose);
    }
    CountPoses(state);
}

void BM_Attach(benchmark::State& state) {
    const PoseLanes pose = SomePoses();
    PoseLanes global = {};
    for ([[maybe_unused]] auto _ : state) {
        math::AttachPoses(pose, pose, global);
        benchmark::DoNotOptimize(global);
    }
    CountPoses(state);
}

void BM_CompareNeighbours(benchmark::State& state) {
    const PoseLanes pose = SomePoses();
    double cosines[kPoseLanes];
    for ([[maybe_unused]] auto _ : state) {
        math::CompareNeighbours(pose, cosines);
        benchmark::DoNotOptimize(cosines);
    }
    CountPoses(state);
}

void BM_AnglesOf(benchmark::State& state) {
    const PoseLanes pose = SomePoses();
    AngleLanes angles;
    for ([[maybe_unused]] auto _ : state) {
        math::AnglesOf(pose, angles);
        benchmark::DoNotOptimize(angles);
    }
    CountPoses(state);
}

void BM_AreFinite(benchmark::State& state) {
    const PoseLanes pose = SomePoses();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(math::AreFinite(pose));
    CountPoses(state);
}

BENCHMARK(BM_TurnOneByOne);
BENCHMARK(BM_Turn);
BENCHMARK(BM_Attach);
BENCHMARK(BM_CompareNeighbours);
BENCHMARK(BM_AnglesOf);
BENCHMARK(BM_AreFinite);

}  // namespace
