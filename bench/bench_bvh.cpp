// Times two stages of a BVH import, and whole imports. One item is the value of one channel in one
// frame.
#include <benchmark/benchmark.h>
#include <string>
#include <utility>

#include "bench/synthetic_bvh.h"
#include "bvh/biovision_import.h"
#include "headless/session.h"

namespace {

// The constructor reads a BVH file and its first word, HIERARCHY. Parse then parses the rest of the
// file without an importer.
struct ParsedFile {
    explicit ParsedFile(const std::string& path) {
        file.ReadFile(std::wstring(path.begin(), path.end()).c_str());
        file.GetNextString();
        allowances.Reset(file.GetSize());
    }
    void Parse() {
        parser.ParseHierarchy(nullptr);
        parser.ParseMotion();
    }

    CStringFile file;
    MocapSkeleton skeleton;
    FileAllowances allowances;
    ParseMonitor monitor;
    BvhParser parser{file, skeleton, allowances, monitor};
};

bench::BvhShape ShapeOf(const benchmark::State& state) {
    return {.joints = state.range(0), .frames = state.range(1)};
}

void Count(benchmark::State& state) {
    const bench::BvhShape shape = ShapeOf(state);
    const std::int64_t values = bench::Channels(shape) * shape.frames;
    state.SetItemsProcessed(state.iterations() * values);
    state.counters["ns/value"] =
        benchmark::Counter(static_cast<double>(state.iterations() * values) / 1e9,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Times how long it takes to parse a text into nodes and keys. The time to read the file and the
// time to free the keys are not included.
void BM_Parse(benchmark::State& state) {
    const std::string path = bench::SyntheticBvhFile(ShapeOf(state));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        {
            ParsedFile file(path);
            state.ResumeTiming();
            file.Parse();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    Count(state);
}

// Times how long it takes to build the scene from nodes and keys. The time includes the conversion
// of each joint's rotations to the X-Y-Z angles that the scene uses.
void BM_Build(benchmark::State& state) {
    const std::string path = bench::SyntheticBvhFile(ShapeOf(state));
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        {
            headless::Session::Current().Reset();
            ParsedFile file(path);
            file.Parse();
            CBiovisionImport importer;
            importer.SetOptions(true, true, false, true);
            state.ResumeTiming();
            importer.ImportParsed(std::move(file.skeleton), file.parser.FrameTime(), L"bench");
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    Count(state);
}

void BM_WholeImport(benchmark::State& state, bool nulls) {
    const std::string path = bench::SyntheticBvhFile(ShapeOf(state));
    const Zelk::CString file(std::wstring(path.begin(), path.end()).c_str());
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        headless::Session::Current().Reset();
        state.ResumeTiming();
        CBiovisionImport importer;
        importer.SetOptions(nulls, true, false, true);
        if (!importer.ImportBVH(file, L"bench").Succeeded()) state.SkipWithError("import failed");
    }
    Count(state);
}

void BM_ImportNulls(benchmark::State& state) {
    BM_WholeImport(state, true);
}
void BM_ImportBones(benchmark::State& state) {
    BM_WholeImport(state, false);
}

void Shapes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t frames : {1'000, 10'000, 100'000})
        benchmark->Args({24, frames});
    benchmark->Args({500, 1'000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(BM_Parse)->Apply(Shapes);
BENCHMARK(BM_Build)->Apply(Shapes);
BENCHMARK(BM_ImportNulls)->Apply(Shapes);
BENCHMARK(BM_ImportBones)->Apply(Shapes);

}  // namespace
