// Times the survey of an ASF file with an AMC file. Compare the times with those of bench_acclaim,
// which imports the same files. One item is one value of the motion. Each frame has 62 values.
#include <benchmark/benchmark.h>
#include <fstream>
#include <iterator>

#include "bench/synthetic_acclaim.h"
#include "survey/survey.h"

namespace {

std::string Read(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void BM_SurveyPair(benchmark::State& state, bool mended) {
    const bench::AcclaimFiles files = bench::SyntheticAcclaimFiles(state.range(0));
    const std::string asf = Read(files.skeleton);
    std::string amc = Read(files.motion);
    // Because of a comment line between two frames, the plug-in would lose a frame. So the survey
    // mends the motion.
    if (mended) amc.insert(amc.find("\n2\n") + 1, "# two\n");
    const survey::AcclaimFile motion = {amc, "bench.amc"};
    survey::Options options;
    options.purpose = survey::Purpose::Import;
    for ([[maybe_unused]] auto _ : state) {
        const auto found = survey::SurveyAcclaim({asf, "bench.asf"}, {&motion, 1}, options);
        if ((found.motions[0].mended != nullptr) != mended)
            state.SkipWithError(mended ? "the motion was not mended" : "the motion was mended");
    }
    state.SetItemsProcessed(state.iterations() * bench::kAcclaimValues * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(amc.size()));
    state.SetComplexityN(state.range(0));
}

void BM_SurveyClean(benchmark::State& state) {
    BM_SurveyPair(state, false);
}
void BM_SurveyMended(benchmark::State& state) {
    BM_SurveyPair(state, true);
}

void Frames(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1'000)->Arg(10'000)->Arg(50'000)->Unit(benchmark::kMillisecond);
    benchmark->UseRealTime()->Complexity(benchmark::oN);
}

BENCHMARK(BM_SurveyClean)->Apply(Frames);
BENCHMARK(BM_SurveyMended)->Apply(Frames);

}  // namespace
