#include "export/csv.h"

#include <string>
#include <vector>

#include "export/column_names.h"
#include "export/tables.h"
#include "text/byte_sink.h"
#include "text/number_text.h"

namespace exporters {
namespace {

using headless::Transform;

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

}  // namespace

Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options,
               const Progress& progress) {
    const Table table(scene, options, false);
    const int decimals = text::DecimalsFor(table.Size());
    WriteHeader(out, ColumnNames(table));
    std::vector<Transform> locals(table.Columns().size());
    std::vector<Transform> globals(table.Columns().size());
    Table::Scratch scratch;
    std::vector<char> text((2 + 6 * globals.size()) * (text::kLongestNumber + 1) + 1);
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        progress.Report(row, table.Rows());
        table.Row(row, locals, globals, scratch);
        const auto frame = static_cast<double>(table.FrameNumber(row));
        char* end = text::WriteNumber(text.data(), frame, 0);
        end = WriteCell(end, table.Seconds(row), kSecondsDecimals);
        for (const Transform& global : globals) {
            for (const double coordinate : global.origin)
                end = WriteCell(end, coordinate, decimals);
            for (const double angle : headless::AnglesOf(global.axes))
                end = WriteCell(end, angle, text::kAngleDecimals);
        }
        *end++ = '\n';
        out.Write({text.data(), static_cast<std::size_t>(end - text.data())});
    }
    return table.GetNotes();
}

}  // namespace exporters
