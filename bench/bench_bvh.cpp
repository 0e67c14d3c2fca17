// A BVH import stage by stage, and whole. Items are values: joints' channels times frames.
#include <benchmark/benchmark.h>

#include "bench/synthetic_bvh.h"
#include "bvh/biovision_import.h"
#include "headless/session.h"

namespace {

// The importer with its stages in the open.
class Stages : public CBiovisionImport {
  public:
    Stages() { SetOptions(true, true, false, true); }

    void Load(const std::string& path) {
        headless::Session::Current().Reset();
        stringFile.ReadFile(std::wstring(path.begin(), path.end()).c_str());
        stringFile.GetNextString();
        progressBar = &bar;
    }
    void Parse() { ParseBVH(nullptr); }
    void Normalise() { FixRotationsOrder(); }
    void Build() { CreateZelkEntities(L"bench"); }
    void Finish() { Clear(true); }

  private:
    CIFPlugProgressBar bar;
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

using Stage = void (Stages::*)();

// Times one stage; those before it and the clearing up are not counted.
void BM_Stage(benchmark::State& state, std::initializer_list<Stage> before, Stage timed) {
    const std::string path = bench::SyntheticBvhFile(ShapeOf(state));
    for (auto _ : state) {
        state.PauseTiming();
        {
            Stages stages;
            stages.Load(path);
            for (const Stage stage : before)
                (stages.*stage)();
            state.ResumeTiming();
            (stages.*timed)();
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
    Count(state);
}

void BM_Parse(benchmark::State& state) {
    BM_Stage(state, {}, &Stages::Parse);
}
void BM_Normalise(benchmark::State& state) {
    BM_Stage(state, {&Stages::Parse}, &Stages::Normalise);
}
void BM_Build(benchmark::State& state) {
    BM_Stage(state, {&Stages::Parse, &Stages::Normalise}, &Stages::Build);
}

void BM_WholeImport(benchmark::State& state, bool nulls) {
    const std::string path = bench::SyntheticBvhFile(ShapeOf(state));
    const Zelk::CString file(std::wstring(path.begin(), path.end()).c_str());
    for (auto _ : state) {
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
BENCHMARK(BM_Normalise)->Apply(Shapes);
BENCHMARK(BM_Build)->Apply(Shapes);
BENCHMARK(BM_ImportNulls)->Apply(Shapes);
BENCHMARK(BM_ImportBones)->Apply(Shapes);

}  // namespace
