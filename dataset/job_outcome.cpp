#include "dataset/job_outcome.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <string_view>
#include <vector>

#include "dataset/exit_status.h"

namespace dataset {
namespace {

// The program's own errors on stderr begin with this.
constexpr std::string_view kErrorStart = "zkhost: ";

// Reads the report, which is the last line of the output. A plug-in may have printed lines before
// it. Returns nullopt if there is no report.
std::optional<ImportReport> ReportIn(std::string_view output) {
    if (!output.ends_with('\n')) return std::nullopt;
    output.remove_suffix(1);
    return ReadReport(output.substr(output.rfind('\n') + 1));
}

// Returns the first error in `errors` that the program itself printed; empty if there is none.
std::string FirstOwnError(std::string_view errors) {
    while (!errors.empty()) {
        const std::string_view line = errors.substr(0, errors.find('\n'));
        if (line.starts_with(kErrorStart)) return std::string(line.substr(kErrorStart.size()));
        errors.remove_prefix(std::min(line.size() + 1, errors.size()));
    }
    return {};
}

// Returns the outputs of the job that the import has written.
std::vector<std::string> WrittenOutputs(const Job& job, const ImportReport& report) {
    std::vector<std::string> written;
    const std::size_t count = std::min(job.outputs.size(), report.outputs.size());
    for (std::size_t index = 0; index < count; ++index)
        if (report.outputs[index]) written.push_back(job.outputs[index]);
    return written;
}

JobStatus StatusOf(const ProcessEnd& end) {
    if (end.cancelled) return JobStatus::Cancelled;
    if (end.exitStatus == kImported) return JobStatus::Ok;
    if (end.exitStatus == kImportedInPart) return JobStatus::Partial;
    return JobStatus::Failed;
}

std::string ErrorOf(const ProcessEnd& end, const std::optional<ImportReport>& report) {
    if (!end.trouble.empty()) return end.trouble;
    if (report && !report->error.empty()) return report->error;
    std::string error = FirstOwnError(end.errors);
    if (!error.empty()) return error;
    return fmt::format("ended with exit status {}", end.exitStatus.value_or(-1));
}

}  // namespace

IndexRow JudgeJob(const Job& job, const ProcessEnd& end) {
    IndexRow row;
    row.source = job.source;
    row.status = StatusOf(end);
    if (row.status == JobStatus::Cancelled) return row;
    const std::optional<ImportReport> report = ReportIn(end.output);
    if (report) row.output = OutputField(WrittenOutputs(job, *report));
    // An import without a report has failed, even if its exit status says that it succeeded. For
    // example, the plug-in may have ended the process.
    if (!report && row.status != JobStatus::Failed) row.status = JobStatus::Failed;
    if (report) RecordFindings(*report, row);
    const bool imported = row.status != JobStatus::Failed || end.exitStatus == kOutputFailed;
    if (report && imported) RecordMeasures(*report, row);
    if (row.status != JobStatus::Ok) row.error = ErrorOf(end, report);
    return row;
}

JobDetails DetailsOf(const ProcessEnd& end) {
    JobDetails details;
    details.wasRun = true;
    const std::optional<ImportReport> report = ReportIn(end.output);
    if (!report) return details;
    details.refused = report->refused;
    details.diskIsFull = report->diskIsFull;
    details.loadMilliseconds = report->loadMilliseconds;
    details.hashMilliseconds = report->hashMilliseconds;
    for (const std::optional<double>& milliseconds : report->outputs)
        details.writeMilliseconds += milliseconds.value_or(0.0);
    for (const ImportReport::ReportedFinding& found : report->findings)
        if (found.severity != "note") details.findings += found.line;
    return details;
}

IndexRow RefusedRow(const Job& job) {
    IndexRow row;
    row.source = job.source;
    row.status = JobStatus::Failed;
    row.error = job.refusal;
    return row;
}

}  // namespace dataset
