// Times the survey of a BVH file with the writing of its mended text, and the scan of its rows,
// which is a part of the survey. The reported bytes per second count all bytes of the file.
#include <benchmark/benchmark.h>
#include <string>
#include <string_view>

#include "bench/synthetic_bvh.h"
#include "survey/byte_masks.h"
#include "survey/row_scan.h"
#include "survey/survey.h"
#include "text/byte_sink.h"

namespace {

std::string Text(const benchmark::State& state) {
    return bench::SyntheticBvh({.joints = state.range(0), .frames = state.range(1)});
}

// Returns the same text, but each joint lists its rotation channels in the order X Y Z. The survey
// mends this order for the plug-in.
std::string RisingText(const benchmark::State& state) {
    std::string text = Text(state);
    constexpr std::string_view kListed = "Zrotation Xrotation Yrotation";
    constexpr std::string_view kRising = "Xrotation Yrotation Zrotation";
    for (std::size_t at = 0; (at = text.find(kListed, at)) != std::string::npos;)
        text.replace(at, kListed.size(), kRising);
    return text;
}

void Count(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void BM_Scan(benchmark::State& state, survey::ByteMasksKernel kernel) {
    const std::string text = Text(state);
    const std::string_view rows =
        std::string_view(text).substr(text.find("0.008333") + std::string_view("0.008333").size());
    const auto channels =
        static_cast<std::size_t>(bench::Channels({state.range(0), state.range(1)}));
    for ([[maybe_unused]] auto _ : state) {
        const survey::RowScan scan = survey::ScanRows(rows, channels, kernel);
        if (!scan.plain) state.SkipWithError("ScanRows found a row that is not plain");
    }
    Count(state, text);
}

void BM_ScanRows(benchmark::State& state) {
    BM_Scan(state, survey::ChooseByteMasks());
}
void BM_ScanRowsPlain(benchmark::State& state) {
    BM_Scan(state, survey::ByteMasksPlain);
}

class NoSink final : public text::ByteSink {
  public:
    void Write(std::string_view bytes) override { benchmark::DoNotOptimize(bytes); }
};

void BM_Survey(benchmark::State& state, const std::string& text, survey::Purpose purpose,
               bool expectsMended) {
    NoSink sink;
    survey::Options options;
    options.purpose = purpose;
    for ([[maybe_unused]] auto _ : state) {
        const survey::BvhSurvey found = survey::SurveyBvh(text, options);
        if ((found.mended != nullptr) != expectsMended)
            state.SkipWithError(expectsMended ? "the text was not mended" : "the text was mended");
        if (found.mended) benchmark::DoNotOptimize(found.mended->Write(sink));
    }
    Count(state, text);
}

void BM_SurveyClean(benchmark::State& state) {
    BM_Survey(state, Text(state), survey::Purpose::Import, false);
}
void BM_SurveyRising(benchmark::State& state) {
    BM_Survey(state, RisingText(state), survey::Purpose::Import, true);
}
void BM_Check(benchmark::State& state) {
    BM_Survey(state, Text(state), survey::Purpose::Check, false);
}

void Shapes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Args({24, 10'000})->Args({24, 100'000})->Args({500, 1'000});
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(BM_ScanRows)->Apply(Shapes);
BENCHMARK(BM_ScanRowsPlain)->Apply(Shapes);
BENCHMARK(BM_SurveyClean)->Apply(Shapes);
BENCHMARK(BM_SurveyRising)->Apply(Shapes);
BENCHMARK(BM_Check)->Apply(Shapes);

}  // namespace
