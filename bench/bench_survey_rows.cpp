// Times the loops of the survey that have a slower reference, on files of 10,000 frames. BM_Scan
// and BM_ScanParts scan the rows of a BVH motion, BM_ReadRows and BM_PlainRows read them, BM_Next
// and BM_Blocks re-express the rotations of a joint. BM_MatchFrames and BM_Matches match the
// frames of an AMC motion. The argument is the number of threads. The bytes per second count the
// bytes of the file, the items per second frames.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "bench/synthetic_acclaim.h"
#include "bench/synthetic_bvh.h"
#include "survey/amc_matches.h"
#include "survey/bvh_plain_rows.h"
#include "survey/bvh_rotations.h"
#include "survey/row_scan_parts.h"

namespace {

constexpr bench::BvhShape kShape{.joints = 24, .frames = 10'000};
constexpr auto kFrames = static_cast<std::size_t>(kShape.frames);

// The rows of a BVH motion.
struct Motion {
    Motion() : file(bench::SyntheticBvh(kShape)), source(file) {
        constexpr std::string_view kTime = "0.008333\n";
        text = source.Text();
        rows = text.substr(text.find(kTime) + kTime.size());
        section.channels = static_cast<std::size_t>(bench::Channels(kShape));
        section.motion.present = true;
        section.motion.rows = {rows.data(), 1};
    }

    std::string file;
    survey::SourceText source;
    std::string_view text;
    std::string_view rows;
    survey::BvhSection section;
};

void CountBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    state.SetItemsProcessed(state.iterations() * kShape.frames);
}

void BM_Scan(benchmark::State& state) {
    const Motion motion;
    for ([[maybe_unused]] auto _ : state)
        if (!survey::ScanRows(motion.rows, motion.section.channels).plain)
            state.SkipWithError("a row is not plain");
    CountBytes(state, motion.file.size());
}

void BM_ScanParts(benchmark::State& state) {
    const Motion motion;
    const auto threads = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        if (!survey::ScanRowsInParts(motion.rows, motion.section.channels, threads).plain)
            state.SkipWithError("a row is not plain");
    CountBytes(state, motion.file.size());
}

void BM_ReadRows(benchmark::State& state) {
    const Motion motion;
    for ([[maybe_unused]] auto _ : state) {
        survey::FindingList findings(motion.source);
        survey::BvhFrames frames;
        if (!survey::ReadRows(motion.section, motion.text, findings, frames))
            state.SkipWithError("the rows were refused");
    }
    CountBytes(state, motion.file.size());
}

void BM_PlainRows(benchmark::State& state) {
    const Motion motion;
    const auto threads = static_cast<std::size_t>(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        survey::BvhFrames frames;
        if (!survey::ReadPlainRows(motion.section, motion.text, kFrames, threads, frames))
            state.SkipWithError("the rows are not plain");
    }
    CountBytes(state, motion.file.size());
}

// A joint with three rotations, and its values in all frames.
struct Turning {
    Turning() : values(3 * kFrames), angles(3 * kFrames) {
        joint.channelCount = 3;
        joint.channels = {survey::BvhChannel::RotationX, survey::BvhChannel::RotationY,
                          survey::BvhChannel::RotationZ};
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<double>(i * 7919 % 160'000) / 1000.0 - 80.0;
    }

    survey::BvhJoint joint;
    std::vector<double> values;
    std::vector<double> angles;
};

void BM_Next(benchmark::State& state) {
    Turning turning;
    for ([[maybe_unused]] auto _ : state) {
        survey::ReexpressedAngles turned(turning.joint);
        for (std::size_t at = 0; at < turning.values.size(); at += 3)
            turned.Next(&turning.values[at], &turning.angles[at]);
        benchmark::DoNotOptimize(turning.angles.data());
    }
    state.SetItemsProcessed(state.iterations() * kShape.frames);
}

void BM_Blocks(benchmark::State& state) {
    Turning turning;
    survey::ListedBlock block;
    for ([[maybe_unused]] auto _ : state) {
        survey::ReexpressedAngles turned(turning.joint);
        for (std::size_t at = 0; at < kFrames; at += survey::kFramesInBlock) {
            const survey::FrameRows rows = {&turning.values[3 * at], 3,
                                            std::min(survey::kFramesInBlock, kFrames - at)};
            turned.Compute(rows, block);
            turned.Follow(rows, block, &turning.angles[3 * at], 3);
        }
        benchmark::DoNotOptimize(turning.angles.data());
    }
    state.SetItemsProcessed(state.iterations() * kShape.frames);
}

// Matches all frames of an AMC motion with the first one.
template <class Matcher>
void MatchAll(benchmark::State& state, const std::string& amc, const char* first,
              const Matcher& makeMatcher) {
    const survey::AsfSkeleton skeleton;
    const survey::AmcBones bones(skeleton);
    survey::AmcFrame frame;
    survey::AmcFrameReader(amc, bones).Read(first, frame);
    survey::AmcScan scan(amc);
    scan.Learn(frame);
    for ([[maybe_unused]] auto _ : state) {
        auto match = makeMatcher(scan);
        std::int64_t frames = 0;
        std::uint32_t number = 0;
        for (const char* at = first; at != nullptr && at < amc.data() + amc.size(); ++frames)
            at = match(at, number);
        if (frames != kShape.frames) state.SkipWithError("a frame does not match");
    }
    CountBytes(state, amc.size());
}

std::string Amc() {
    std::ifstream file(bench::SyntheticAcclaimFiles(kShape.frames).motion, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void BM_MatchFrames(benchmark::State& state) {
    const std::string amc = Amc();
    MatchAll(state, amc, amc.data() + amc.find("\n1\n") + 1, [](const survey::AmcScan& scan) {
        return
            [&scan](const char* at, std::uint32_t& number) { return scan.MatchFrame(at, number); };
    });
}

void BM_Matches(benchmark::State& state) {
    const std::string amc = Amc();
    const auto threads = static_cast<std::size_t>(state.range(0));
    MatchAll(state, amc, amc.data() + amc.find("\n1\n") + 1, [&](const survey::AmcScan& scan) {
        return [matches = survey::AmcMatches(scan, amc, threads)](const char* at,
                                                                  std::uint32_t& number) mutable {
            return matches.MatchFrame(at, number);
        };
    });
}

void Unit(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}
void Threads(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("threads")->Arg(1)->Arg(2)->Apply(Unit);
}

BENCHMARK(BM_Scan)->Apply(Unit);
BENCHMARK(BM_ScanParts)->Apply(Threads);
BENCHMARK(BM_ReadRows)->Apply(Unit);
BENCHMARK(BM_PlainRows)->Apply(Threads);
BENCHMARK(BM_Next)->Apply(Unit);
BENCHMARK(BM_Blocks)->Apply(Unit);
BENCHMARK(BM_MatchFrames)->Apply(Unit);
BENCHMARK(BM_Matches)->Apply(Threads);

}  // namespace
