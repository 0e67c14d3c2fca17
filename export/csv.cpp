#include "export/csv.h"

#include <algorithm>
#include <string>
#include <vector>

#include "export/block_parts.h"
#include "export/column_names.h"
#include "export/run_parts.h"
#include "export/table_blocks.h"
#include "export/tables.h"
#include "text/byte_sink.h"
#include "text/number_text.h"
#include "threads/block_order.h"

namespace exporters {
namespace {

using math::PoseLanes;

constexpr int kSecondsDecimals = 9;

void WriteHeader(text::ByteSink& out, const std::vector<std::string>& names) {
    out.Write("frame,seconds");
    for (const std::string& name : names)
        for (const char* part : {"_px", "_py", "_pz", "_rx", "_ry", "_rz"})
            out.Write(',' + name + part);
    out.Write("\n");
}

// Appends a comma and the number to the text that ends at `end`. Returns the new end.
char* WriteCell(char* end, double number, int decimals) {
    *end++ = ',';
    return text::WriteNumber(end, number, decimals);
}

// Rows that one thread writes to text.
struct CsvPart {
    std::size_t first = 0;
    std::size_t end = 0;
    std::vector<char> text;
    std::size_t size = 0;         // of the text
    std::vector<double> numbers;  // of a block: kWidth for each column of each row
    TableBlocks::Scratch scratch;
};

class CsvRows {
  public:
    CsvRows(const Table& table, const TableBlocks& blocks)
        : table_(table),
          blocks_(blocks),
          decimals_(text::DecimalsFor(table.Size())),
          longestRow_((2 + kWidth * blocks.Columns()) * (text::kLongestNumber + 1) + 1) {}

    void Write(text::ByteSink& out, const Progress& progress) const {
        const std::size_t share = FramesAtOnce(longestRow_);
        std::vector<CsvPart> parts(PartsFor(table_.Rows() * blocks_.Columns()));
        threads::BlockOrder order(1);
        order.Run((table_.Rows() + share - 1) / share, parts.size(),
                  [&](std::size_t thread, std::size_t block) {
                      CsvPart& part = parts[thread];
                      part.first = block * share;
                      part.end = std::min(part.first + share, table_.Rows());
                      // Only the calling thread reports progress.
                      Fill(part, thread == 0 ? progress : Progress());
                      order.InOrder(0, block, [&] { out.Write({part.text.data(), part.size}); });
                  });
    }

  private:
    // Three coordinates and three angles.
    static constexpr std::size_t kWidth = 6;

    void Fill(CsvPart& part, const Progress& progress) const {
        part.text.resize((part.end - part.first) * longestRow_);
        char* end = part.text.data();
        for (std::size_t row = part.first; row < part.end; row += math::kPoseLanes) {
            const std::size_t count = std::min(math::kPoseLanes, part.end - row);
            Compute(row, count, part);
            for (std::size_t index = 0; index < count; ++index) {
                progress.Report(row + index, table_.Rows());
                end = WriteRow(end, row + index,
                               part.numbers.data() + index * kWidth * blocks_.Columns());
            }
        }
        part.size = static_cast<std::size_t>(end - part.text.data());
    }

    void Compute(std::size_t row, std::size_t count, CsvPart& part) const {
        const std::size_t width = kWidth * blocks_.Columns();
        part.numbers.resize(count * width);
        math::AngleLanes angles;
        blocks_.ForEach(row, count, part.scratch,
                        [&](std::size_t column, PoseLanes&, const PoseLanes& global) {
                            math::AnglesOf(global, angles);
                            double* numbers = part.numbers.data() + kWidth * column;
                            for (std::size_t lane = 0; lane < count; ++lane, numbers += width)
                                for (std::size_t axis = 0; axis < 3; ++axis) {
                                    numbers[axis] = global.position[axis][lane];
                                    numbers[3 + axis] = angles.angle[axis][lane];
                                }
                        });
    }

    char* WriteRow(char* end, std::size_t row, const double* numbers) const {
        end = text::WriteNumber(end, static_cast<double>(table_.FrameNumber(row)), 0);
        end = WriteCell(end, table_.Seconds(row), kSecondsDecimals);
        for (std::size_t column = 0; column < blocks_.Columns(); ++column, numbers += kWidth) {
            for (std::size_t axis = 0; axis < 3; ++axis)
                end = WriteCell(end, numbers[axis], decimals_);
            for (std::size_t axis = 3; axis < kWidth; ++axis)
                end = WriteCell(end, numbers[axis], text::kAngleDecimals);
        }
        *end++ = '\n';
        return end;
    }

    const Table& table_;
    const TableBlocks& blocks_;
    int decimals_;
    std::size_t longestRow_;  // in bytes
};

}  // namespace

Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress) {
    const Table table(scene, options, false);
    const TableBlocks blocks(table, scene, options);
    WriteHeader(out, ColumnNames(table));
    CsvRows(table, blocks).Write(out, progress);
    return table.GetNotes();
}

}  // namespace exporters
