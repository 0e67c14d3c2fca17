// Times whole imports of an ASF file with an AMC file. One item is one value of the motion. Each
// frame has 62 values.
#include <benchmark/benchmark.h>

#include "acclaim/acclaim_import.h"
#include "bench/synthetic_acclaim.h"
#include "headless/session.h"

namespace {

Zelk::CString HostPath(const std::string& path) {
    return {std::wstring(path.begin(), path.end()).c_str()};
}

void BM_ImportAcclaim(benchmark::State& state, bool nulls) {
    const bench::AcclaimFiles files = bench::SyntheticAcclaimFiles(state.range(0));
    const Zelk::CString skeleton = HostPath(files.skeleton);
    const Zelk::CString motion = HostPath(files.motion);
    for (auto _ : state) {
        state.PauseTiming();
        headless::Session::Current().Reset();
        state.ResumeTiming();
        CAcclaimImport importer;
        importer.SetOptions(nulls, true, false, true);
        if (!importer.ImportSkeleton(skeleton, L"bench").Succeeded() ||
            !importer.ImportMotion(motion, L"motion").Succeeded())
            state.SkipWithError("import failed");
    }
    state.SetItemsProcessed(state.iterations() * bench::kAcclaimValues * state.range(0));
    state.SetComplexityN(state.range(0));
}

void BM_AcclaimNulls(benchmark::State& state) {
    BM_ImportAcclaim(state, true);
}
void BM_AcclaimBones(benchmark::State& state) {
    BM_ImportAcclaim(state, false);
}

void Frames(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
    benchmark->UseRealTime()->Complexity(benchmark::oN);
}

BENCHMARK(BM_AcclaimNulls)->Apply(Frames);
BENCHMARK(BM_AcclaimBones)->Apply(Frames);

}  // namespace
