// Times how long it takes to read the rows of a motion. BM_SingleValues reads them value by value
// with CStringFile, BM_RowsByDigits row by row with ReadRowByDigits; these are the references.
// BM_Rows reads them with ReadRow, and BM_Blocks with RowBlocks, on one thread and on two.
#include <benchmark/benchmark.h>
#include <cstdint>
#include <string>
#include <vector>

#include "bench/synthetic_bvh.h"
#include "mocap/row_blocks.h"
#include "textio/row_reader.h"
#include "textio/string_file.h"

namespace {

// The motion of a file with 24 joints, and memory for its values.
class Motion {
  public:
    explicit Motion(std::int64_t frames) : rows_(static_cast<std::size_t>(frames)) {
        const std::string path = bench::SyntheticBvhFile({.joints = 24, .frames = frames});
        file.ReadFile(std::wstring(path.begin(), path.end()).c_str());
        while (file.GetNextString() != std::string("Time:")) {
        }
        file.GetNextString();
        start = file.GetPosition();
        first = textio::SkipToRow(file.GetBuffer() + start);
        last = file.GetBuffer() + file.GetSize();
        const char* at = first;
        for (; *at != '\n'; ++at)
            width_ += *at == ' ';
        ++width_;
        values_.resize(width_ * rows_);
        for (std::size_t column = 0; column < width_; ++column)
            columns_.push_back(values_.data() + column * rows_);
        target = {columns_.data(), width_};
    }

    std::size_t Rows() const { return rows_; }
    std::size_t Values() const { return values_.size(); }

    CStringFile file;
    std::uint32_t start = 0;
    const char* first = nullptr;
    const char* last = nullptr;
    textio::RowTarget target{};

  private:
    std::size_t rows_;
    std::size_t width_ = 0;
    std::vector<double> values_;
    std::vector<double*> columns_;
};

void CountValues(benchmark::State& state, const Motion& motion) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(motion.Values()));
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(motion.last - motion.first));
}

void BM_SingleValues(benchmark::State& state) {
    Motion motion(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        motion.file.SetPosition(motion.start);
        for (std::size_t row = 0; row < motion.Rows(); ++row)
            for (std::size_t column = 0; column < motion.target.width; ++column)
                motion.file.GetNextFloat(motion.target.columns[column][row]);
    }
    CountValues(state, motion);
}

void BM_ReadRows(benchmark::State& state, decltype(textio::ReadRow)& readRow) {
    const Motion motion(state.range(0));
    for ([[maybe_unused]] auto _ : state) {
        const char* at = motion.first;
        for (std::size_t row = 0; row < motion.Rows() && at != nullptr; ++row)
            at = readRow(at, motion.last, motion.target, row);
        if (at == nullptr) state.SkipWithError("the text has no rows");
    }
    CountValues(state, motion);
}

void BM_Rows(benchmark::State& state) {
    BM_ReadRows(state, textio::ReadRow);
}
void BM_RowsByDigits(benchmark::State& state) {
    BM_ReadRows(state, textio::ReadRowByDigits);
}

class LineReader : public RowBlocks::Reader {
  public:
    explicit LineReader(const textio::RowTarget& target) : target_(target) {}
    const char* ReadRow(const char* at, const char* last, std::size_t row) const noexcept override {
        return textio::ReadRow(at, last, target_, row);
    }

  private:
    const textio::RowTarget& target_;
};

struct Listener : RowBlocks::Listener {
    bool HasRead(std::size_t /*rows*/) override { return true; }
};

void BM_Blocks(benchmark::State& state) {
    const Motion motion(state.range(0));
    const LineReader reader(motion.target);
    Listener listener;
    for ([[maybe_unused]] auto _ : state) {
        RowBlocks blocks(motion.first, motion.last, reader, 1, motion.Rows());
        blocks.Read(static_cast<std::size_t>(state.range(1)), listener);
        if (blocks.RowsRead() != motion.Rows()) state.SkipWithError("the text has no rows");
    }
    CountValues(state, motion);
}

BENCHMARK(BM_SingleValues)->Arg(1000)->Arg(10'000);
BENCHMARK(BM_RowsByDigits)->Arg(1000)->Arg(10'000);
BENCHMARK(BM_Rows)->Arg(1000)->Arg(10'000);
BENCHMARK(BM_Blocks)
    ->ArgNames({"frames", "threads"})
    ->Args({10'000, 1})
    ->Args({10'000, 2})
    ->UseRealTime();

}  // namespace
