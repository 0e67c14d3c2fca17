#include "cli/import_command.h"

#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

#include "bridge/export_input.h"
#include "cli/amc_rate.h"
#include "cli/exports.h"
#include "cli/interrupt.h"
#include "cli/outputs.h"
#include "cli/print.h"
#include "cli/rate_text.h"
#include "cli/report.h"
#include "cli/run_take.h"
#include "cli/source_files.h"
#include "cli/summary.h"
#include "cli/tree.h"
#include "dataset/exit_status.h"
#include "export/motion_facts.h"
#include "files/system_storage.h"
#include "take/import.h"
#include "take/input_text.h"
#include "take/outcome.h"
#include "take/request.h"

namespace cli {
namespace {

using dataset::ExitStatus;

// Without the survey, only the beginning of a motion file shows whether it states its rate, as the
// plug-in reads it.
bool LacksRate(const take::Request& request) {
    if (!request.asIs || !request.motion) return false;
    files::SystemStorage storage;
    return !StatesRate(take::InputText(*request.motion, storage).Text());
}

SummaryRequest SummaryOf(const take::Request& request, const take::Result& result) {
    SummaryRequest summary;
    summary.files.push_back(request.file.path);
    if (request.motion) summary.files.push_back(request.motion->path);
    summary.rateOrigin = result.rateOrigin;
    if (LacksRate(request)) {
        summary.fileWithoutRate = request.motion->path;
        if (result.rateOrigin == take::RateOrigin::File)
            summary.rateOrigin = take::RateOrigin::Assumed;
    }
    summary.inPart = result.outcome.status == take::Status::ImportedInPart;
    summary.models = result.outcome.models;
    summary.framesPerSecond = result.framesPerSecond;
    summary.skeletons = bridge::SkeletonsOf(result);
    return summary;
}

// Returns the rate that the take's file states. Without the survey, it is the rate at which the
// plug-in imported the motion. Nullopt if the file states no rate or if there is no motion.
std::optional<double> StatedRate(const take::Request& request, const take::Result& result) {
    if (!request.asIs) return result.statedRate;
    const std::vector<const headless::Object*> models = result.Scene().Models();
    if (models.empty() || LacksRate(request)) return std::nullopt;
    const double secondsPerFrame =
        exporters::MeasureModel(result.Scene(), *models.front()).secondsPerFrame;
    return secondsPerFrame > 0.0 ? std::optional(1.0 / secondsPerFrame) : std::nullopt;
}

ExitStatus StatusOf(take::Status status) {
    switch (status) {
        case take::Status::Imported:
            return dataset::kImported;
        case take::Status::ImportedInPart:
            return dataset::kImportedInPart;
        case take::Status::Cancelled:
            return dataset::kCancelled;
        case take::Status::Failed:
            break;
    }
    return dataset::kImportFailed;
}

// One run of "zkhost import".
class ImportRun {
  public:
    // Runs the import. Throws what RunTake throws. `request` must outlive this object.
    explicit ImportRun(const ImportRequest& request) : request_(request), run_(RunTake(request)) {}

    // Writes the outputs and prints the results. Returns the exit status.
    int Finish() {
        if (!run_.result.problem.empty()) {
            PrintError(run_.result.problem);
            return dataset::kOutputFailed;
        }
        const ExitStatus status = StatusOf(run_.result.outcome.status);
        OutputsResult written;
        if (status != dataset::kCancelled) {
            const SourceFiles sources = DescribeSources(run_.take, request_.provenance);
            hashMilliseconds_ = sources.hashMilliseconds;
            written = WriteOutputs(request_, run_.result, sources.files, run_.drawsBar);
        }
        // Without --report, a signal may end the process from here on. With --report, it must not,
        // because "zkhost convert" started this process and has to read its report. "zkhost
        // convert" sends SIGINT only once, and the handler only records the first signal.
        if (!request_.report) RestoreInterrupts();
        // "zkhost convert" reports that a job was cancelled, so the job itself says nothing.
        if (written.interrupted && !request_.report)
            PrintError(CancelledMessage(written.cancelled, written.files));
        if (status == dataset::kCancelled || written.interrupted) return dataset::kCancelled;
        if (request_.report) PrintReport(written);
        if (run_.result.IsImported()) {
            PrintScene();
            NoteSpeed();
        }
        if (request_.timing) PrintTiming(written);
        return run_.result.IsImported() && written.failed ? dataset::kOutputFailed : status;
    }

  private:
    void PrintScene() const {
        if (!request_.quiet)
            PrintSummary(run_.result.Scene(), SummaryOf(run_.take, run_.result), ToStdout());
        if (request_.tree)
            PrintTree(run_.result.Scene(), ExportOptionsOf(request_, run_.result), ToStdout());
    }

    // Says so if --fps makes the take much slower or faster than its file states. "zkhost convert"
    // would read the note as an error of the import.
    void NoteSpeed() const {
        if (!run_.take.framesPerSecond || request_.report) return;
        const std::string note =
            SpeedNote(*run_.take.framesPerSecond, StatedRate(run_.take, run_.result));
        if (!note.empty()) PrintError(note);
    }

    void PrintReport(const OutputsResult& written) const {
        dataset::ImportReport report = ReportOf(request_.take, run_.result);
        report.outputs = written.milliseconds;
        report.loadMilliseconds = run_.loadMilliseconds;
        report.hashMilliseconds = hashMilliseconds_;
        report.diskIsFull = written.diskIsFull;
        ToStdout()(dataset::ReportLine(report));
    }

    void PrintTiming(const OutputsResult& written) const {
        ToStdout()(fmt::format("load_ms={:.3f}\n", run_.loadMilliseconds));
        if (request_.provenance) ToStdout()(fmt::format("hash_ms={:.3f}\n", hashMilliseconds_));
        for (const std::optional<double>& milliseconds : written.milliseconds)
            if (milliseconds) ToStdout()(fmt::format("write_ms={:.3f}\n", *milliseconds));
    }

    const ImportRequest& request_;
    TakeRun run_;
    double hashMilliseconds_ = 0.0;
};

}  // namespace

int RunImport(const ImportRequest& request) {
    const std::string existing = request.noClobber ? FindExistingOutput(request) : std::string();
    if (!existing.empty()) {
        PrintError(fmt::format("{}: exists already, and --no-clobber keeps it", existing));
        return dataset::kOutputFailed;
    }
    return ImportRun(request).Finish();
}

}  // namespace cli
