// Times exporters that write an imported motion. One item is one joint in one frame.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include "bench/synthetic_bvh.h"
#include "bvh/biovision_import.h"
#include "export/bvh.h"
#include "export/crc32.h"
#include "export/csv.h"
#include "export/fbx.h"
#include "export/gltf.h"
#include "export/npz.h"
#include "export/page.h"
#include "export/svg.h"
#include "export/table_blocks.h"
#include "files/output_file.h"
#include "headless/session.h"
#include "text/byte_sink.h"

namespace {

using Writer = exporters::Notes (*)(text::ByteSink&, const headless::Scene&,
                                    const exporters::Options&, const exporters::Progress&);

void Import(const bench::BvhShape& shape, bool nulls) {
    headless::Session::Current().Reset();
    const std::string path = bench::SyntheticBvhFile(shape);
    CBiovisionImport importer;
    importer.SetOptions(nulls, true, false, true);
    importer.ImportBVH(std::wstring(path.begin(), path.end()).c_str(), L"bench");
}

// OutputFile::Commit is not called, so each temporary file is removed before the next temporary
// file is written. Therefore the speed of the disk has little influence on the times.
void BM_Export(benchmark::State& state, Writer write, bool nulls) {
    const bench::BvhShape shape{.joints = state.range(0), .frames = state.range(1)};
    Import(shape, nulls);
    const std::string path = (std::filesystem::temp_directory_path() /
                              ("zkmocap-bench-" + std::to_string(getpid()) + ".out"))
                                 .string();
    for ([[maybe_unused]] auto _ : state) {
        files::OutputFile out(path);
        benchmark::DoNotOptimize(write(out, headless::Session::Current().GetScene(), {}, {}));
    }
    state.SetItemsProcessed(state.iterations() * shape.joints * shape.frames);
}

void Shapes(benchmark::internal::Benchmark* benchmark) {
    for (const std::int64_t frames : {1'000, 10'000, 100'000})
        benchmark->Args({24, frames});
    benchmark->Args({500, 1'000})->Unit(benchmark::kMillisecond)->UseRealTime();
}

exporters::Notes WriteNpz(text::ByteSink& out, const headless::Scene& scene,
                          const exporters::Options& options, const exporters::Progress& progress) {
    return exporters::WriteNpz(out, scene, options, {}, progress);
}

// Packs the take of a page. The page around it is only copied.
exporters::Notes WritePage(text::ByteSink& out, const headless::Scene& scene,
                           const exporters::Options& options, const exporters::Progress& progress) {
    const exporters::PageTake take = exporters::BuildPageTake(scene, options, nullptr, progress);
    out.Write(take.keys);
    return take.notes;
}

exporters::Notes WriteSvg(text::ByteSink& out, const headless::Scene& scene,
                          const exporters::Options& options, const exporters::Progress& progress) {
    return exporters::WriteSvg(out, scene, options, {}, progress);
}

// Evaluates the scene row by row.
void BM_PosesByRow(benchmark::State& state) {
    const bench::BvhShape shape{.joints = state.range(0), .frames = state.range(1)};
    Import(shape, true);
    const exporters::Table table(headless::Session::Current().GetScene(), {}, true);
    std::vector<headless::Transform> locals(table.Columns().size());
    std::vector<headless::Transform> globals(table.Columns().size());
    exporters::Table::Scratch scratch;
    for ([[maybe_unused]] auto _ : state)
        for (std::size_t row = 0; row < table.Rows(); ++row) {
            table.Row(row, locals, globals, scratch);
            benchmark::DoNotOptimize(globals.data());
        }
    state.SetItemsProcessed(state.iterations() * shape.joints * shape.frames);
}

// Computes the same poses in blocks, as quaternions, on the same thread.
void BM_PosesByBlock(benchmark::State& state) {
    const bench::BvhShape shape{.joints = state.range(0), .frames = state.range(1)};
    Import(shape, true);
    const headless::Scene& scene = headless::Session::Current().GetScene();
    const exporters::Table table(scene, {}, true);
    const exporters::TableBlocks blocks(table, scene, {});
    exporters::TableBlocks::Scratch scratch;
    for ([[maybe_unused]] auto _ : state)
        for (std::size_t row = 0; row < table.Rows(); row += math::kPoseLanes)
            blocks.ForEach(row, std::min(math::kPoseLanes, table.Rows() - row), scratch,
                           [](std::size_t, const math::PoseLanes&, const math::PoseLanes& global) {
                               benchmark::DoNotOptimize(global);
                           });
    state.SetItemsProcessed(state.iterations() * shape.joints * shape.frames);
}

// One item is one byte.
void BM_Crc32(benchmark::State& state, std::uint32_t (*crc32)(std::uint32_t, std::string_view)) {
    const std::string bytes(std::size_t{1} << 18U, 'x');
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(crc32(0, bytes));
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

BENCHMARK_CAPTURE(BM_Crc32, Plain, exporters::Crc32Plain);
BENCHMARK_CAPTURE(BM_Crc32, Fastest, exporters::Crc32);

BENCHMARK(BM_PosesByRow)->Args({24, 10'000})->Args({500, 1'000});
BENCHMARK(BM_PosesByBlock)->Args({24, 10'000})->Args({500, 1'000});

BENCHMARK_CAPTURE(BM_Export, GlbOfNulls, exporters::WriteGlb, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, GlbOfBones, exporters::WriteGlb, false)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, BvhOfNulls, exporters::WriteBvh, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, BvhOfBones, exporters::WriteBvh, false)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, FbxOfNulls, exporters::WriteFbx, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, FbxOfBones, exporters::WriteFbx, false)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, CsvOfNulls, exporters::WriteCsv, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, SvgOfNulls, WriteSvg, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, PageOfNulls, WritePage, true)->Apply(Shapes);
BENCHMARK_CAPTURE(BM_Export, NpzOfNulls, WriteNpz, true)->Apply(Shapes);

}  // namespace
