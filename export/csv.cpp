#include "export/csv.h"

#include <string>
#include <vector>

#include "export/tables.h"
#include "text/byte_sink.h"
#include "text/csv_record.h"
#include "text/number_text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::Transform;

constexpr int kSecondsDecimals = 9;

void WriteHeader(text::ByteSink& out, const Table& table) {
    out.Write("frame,seconds");
    for (const Table::Column& column : table.Columns()) {
        const std::string name = text::EncodeUtf8(column.name);
        for (const char* part : {".px", ".py", ".pz", ".rx", ".ry", ".rz"})
            out.Write(',' + text::CsvField(name + part));
    }
    out.Write("\n");
}

// Appends a comma and the number to the text that ends at `end`. Returns the new end.
char* WriteCell(char* end, double number, int decimals) {
    *end++ = ',';
    return text::WriteNumber(end, number, decimals);
}

}  // namespace

Notes WriteCsv(text::ByteSink& out, const headless::Scene& scene, const Options& options) {
    Table table(scene, options, false);
    const int decimals = text::DecimalsFor(table.Size());
    const Timeline& times = table.Times();
    WriteHeader(out, table);
    std::vector<Transform> globals(table.Columns().size());
    std::vector<char> text((2 + 6 * globals.size()) * (text::kLongestNumber + 1) + 1);
    for (std::size_t row = 0; row < table.Rows(); ++row) {
        table.Row(row, globals);
        const double frame = times.IsPose() ? 0.0 : times.frames[row];
        char* end = text::WriteNumber(text.data(), frame, kSecondsDecimals);
        end = WriteCell(end, times.IsPose() ? 0.0 : times.Seconds(row), kSecondsDecimals);
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
