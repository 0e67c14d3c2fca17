#include "dataset/index_file.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>

#include "files/output_file.h"
#include "text/csv_record.h"
#include "text/number_text.h"
#include "text/wide_text.h"

namespace dataset {
namespace {

// Six decimals are enough for any rate. More decimals would mostly show how the file rounded its
// frame time: 0.0083333 seconds give 120.00048000192 frames per second.
constexpr int kDecimals = 6;

std::string NumberOrNothing(const std::optional<double>& number) {
    if (!number) return {};
    char text[text::kLongestNumber];
    return {text, text::WriteNumber(text, *number, kDecimals)};
}

std::string Valid(const std::string& text) {
    return text::EncodeUtf8(text::DecodeUtf8(text));
}

}  // namespace

std::string OutputField(const std::vector<std::string>& paths) {
    return fmt::format("{}", fmt::join(paths, "|"));
}

void RecordMeasures(const ImportReport& report, IndexRow& row) {
    row.joints = std::to_string(report.joints);
    row.frames = std::to_string(report.frames);
    row.framesPerSecond = NumberOrNothing(report.framesPerSecond);
    row.seconds = NumberOrNothing(report.seconds);
}

void RecordFindings(const ImportReport& report, IndexRow& row) {
    std::size_t warnings = 0;
    std::set<std::string> listed;
    for (const ImportReport::ReportedFinding& found : report.findings) {
        if (found.severity == "warning") ++warnings;
        // The skeleton and the motion may have findings with the same code; it is listed once.
        if (!listed.insert(found.code).second) continue;
        row.findings += (row.findings.empty() ? "" : " ") + found.code;
    }
    row.warnings = std::to_string(warnings);
}

std::string_view NameOf(JobStatus status) {
    switch (status) {
        case JobStatus::Ok:
            return "ok";
        case JobStatus::Partial:
            return "partial";
        case JobStatus::Failed:
            return "failed";
        case JobStatus::Cancelled:
            break;
    }
    return "cancelled";
}

void WriteIndex(const std::string& path, const std::vector<IndexRow>& rows) {
    files::OutputFile file(path);
    file.Write("source,output,status,joints,frames,fps,seconds,first error,warnings,findings\n");
    for (const IndexRow& row : rows)
        file.Write(
            text::CsvRecord({Valid(row.source), Valid(row.output), std::string(NameOf(row.status)),
                             row.joints, row.frames, row.framesPerSecond, row.seconds,
                             Valid(row.error), row.warnings, row.findings}));
    file.Commit();
}

}  // namespace dataset
