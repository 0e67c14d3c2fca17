// Times whole imports of an ASF file with an AMC file, and the parsing of the AMC file: in rows,
// and value by value, which is the reference. One item is one value of the motion. Each frame has
// 62 values.
#include <benchmark/benchmark.h>

#include "acclaim/acclaim_import.h"
#include "acclaim/acclaim_parser.h"
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
    for ([[maybe_unused]] auto _ : state) {
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

void BM_ParseAmc(benchmark::State& state) {
    const bench::AcclaimFiles files = bench::SyntheticAcclaimFiles(state.range(0));
    CStringFile file;
    MocapSkeleton skeleton;
    FileAllowances allowances;
    ParseMonitor monitor;
    AcclaimParser parser(file, skeleton, allowances, monitor);
    parser.ReadRows(state.range(1) != 0);
    file.ReadFile(HostPath(files.skeleton).GetWideString());
    allowances.Reset(file.GetSize());
    parser.ForgetSkeleton();
    if (parser.ParseVersion() < 0 || parser.ParseASF() < 0)
        state.SkipWithError("the skeleton is wrong");
    file.ReadFile(HostPath(files.motion).GetWideString());
    for ([[maybe_unused]] auto _ : state) {
        parser.ForgetFile();
        skeleton.frameCount = 0;
        file.SetPosition(0);
        if (parser.ParseMotionHeader() < 0 || parser.ParseAMC() < 0)
            state.SkipWithError("the motion is wrong");
    }
    state.SetItemsProcessed(state.iterations() * bench::kAcclaimValues * state.range(0));
}

void Frames(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
    benchmark->UseRealTime()->Complexity(benchmark::oN);
}

BENCHMARK(BM_ParseAmc)
    ->ArgNames({"frames", "rows"})
    ->ArgsProduct({{1'000, 10'000}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(BM_AcclaimNulls)->Apply(Frames);
BENCHMARK(BM_AcclaimBones)->Apply(Frames);

}  // namespace
