// Times how long it takes to load a BVH file, to read all its tokens, and to read all its numbers.
#include <benchmark/benchmark.h>

#include "bench/synthetic_bvh.h"
#include "textio/string_file.h"

namespace {

std::wstring Wide(const std::string& path) {
    return {path.begin(), path.end()};
}

void BM_ReadFile(benchmark::State& state) {
    const auto path = Wide(bench::SyntheticBvhFile({.joints = 24, .frames = state.range(0)}));
    std::int64_t size = 0;
    for ([[maybe_unused]] auto _ : state) {
        CStringFile file;
        benchmark::DoNotOptimize(file.ReadFile(path.c_str()));
        size = file.GetSize();
    }
    state.SetBytesProcessed(state.iterations() * size);
    state.SetComplexityN(state.range(0));
}

void BM_Tokens(benchmark::State& state) {
    const auto path = Wide(bench::SyntheticBvhFile({.joints = 24, .frames = state.range(0)}));
    CStringFile file;
    file.ReadFile(path.c_str());
    for ([[maybe_unused]] auto _ : state) {
        file.SetPosition(0);
        while (const char* token = file.GetNextString())
            benchmark::DoNotOptimize(token);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.GetSize()));
    state.SetComplexityN(state.range(0));
}

void BM_Numbers(benchmark::State& state) {
    const auto path = Wide(bench::SyntheticBvhFile({.joints = 24, .frames = state.range(0)}));
    CStringFile file;
    file.ReadFile(path.c_str());
    while (file.GetNextString() != std::string("Time:")) {
    }
    const unsigned int motion = file.GetPosition();
    std::int64_t values = 0;
    for ([[maybe_unused]] auto _ : state) {
        file.SetPosition(motion);
        double value = 0.0;
        for (values = 0; file.GetNextFloat(value); ++values)
            benchmark::DoNotOptimize(value);
    }
    state.SetItemsProcessed(state.iterations() * values);
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(file.GetSize() - motion));
    state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_ReadFile)->RangeMultiplier(10)->Range(1000, 100'000)->Complexity(benchmark::oN);
BENCHMARK(BM_Tokens)->RangeMultiplier(10)->Range(1000, 100'000)->Complexity(benchmark::oN);
BENCHMARK(BM_Numbers)->RangeMultiplier(10)->Range(1000, 100'000)->Complexity(benchmark::oN);

}  // namespace
