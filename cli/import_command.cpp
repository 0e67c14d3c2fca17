#include "cli/import_command.h"

#include <chrono>
#include <fmt/format.h>
#include <optional>
#include <string>
#include <vector>

#include "cli/amc_rate.h"
#include "cli/amc_values.h"
#include "cli/exports.h"
#include "cli/import_show.h"
#include "cli/interrupt.h"
#include "cli/outputs.h"
#include "cli/print.h"
#include "cli/rate_text.h"
#include "cli/report.h"
#include "cli/source_files.h"
#include "cli/standard_input.h"
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

ShowOptions ShowOptionsOf(const ImportRequest& request) {
    ShowOptions options;
    options.progress = request.progress;
    options.drawBar = !request.quiet || request.progress == Progress::On;
    options.errorsOnly = request.quiet;
    options.showFindings = !request.report;
    options.file = request.take.file.path;
    if (request.take.motion) options.motionFile = request.take.motion->path;
    options.kind.emplace();
    options.kind->format = request.take.format;
    options.kind->useNulls = request.take.useNulls;
    if (request.take.motion && DrawsBar(options))
        options.kind->amcValues = EstimateAmcValues(*request.take.motion);
    return options;
}

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
    summary.skeletons = SkeletonsOf(result);
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
    // Loads the plug-in and runs the import. Throws PluginError, and std::runtime_error if the
    // standard input cannot be read. `request` must outlive this object.
    explicit ImportRun(const ImportRequest& request) : request_(request), take_(request.take) {
        const take::LoadedPlugin loaded = take::LoadPlugin(request.plugin);
        if (!loaded.plugin) throw PluginError(loaded.problem);
        const ShowOptions options = ShowOptionsOf(request);
        drawsBar_ = DrawsBar(options);
        ImportShow show(options);
        take_.hasProgressBar = show.HasProgressBar();
        // Until the end of the survey, a signal ends the process.
        LoadStandardInput(take_.file);
        if (take_.motion) LoadStandardInput(*take_.motion);
        files::SystemStorage storage(true);
        const auto start = std::chrono::steady_clock::now();
        result_ = take::Import(*loaded.plugin, take_, storage, show.BuildListener());
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - start;
        loadMilliseconds_ = took.count();
    }

    // Writes the outputs and prints the results. Returns the exit status.
    int Finish() {
        if (!result_.problem.empty()) {
            PrintError(result_.problem);
            return dataset::kOutputFailed;
        }
        const ExitStatus status = StatusOf(result_.outcome.status);
        OutputsResult written;
        if (status != dataset::kCancelled) {
            const SourceFiles sources = DescribeSources(take_, request_.provenance);
            hashMilliseconds_ = sources.hashMilliseconds;
            written = WriteOutputs(request_, result_, sources.files, drawsBar_);
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
        if (result_.IsImported()) {
            PrintScene();
            NoteSpeed();
        }
        if (request_.timing) PrintTiming(written);
        return result_.IsImported() && written.failed ? dataset::kOutputFailed : status;
    }

  private:
    void PrintScene() const {
        if (!request_.quiet) PrintSummary(result_.Scene(), SummaryOf(take_, result_), ToStdout());
        if (request_.tree)
            PrintTree(result_.Scene(), ExportOptionsOf(request_, result_), ToStdout());
    }

    // Says so if --fps makes the take much slower or faster than its file states. "zkhost convert"
    // would read the note as an error of the import.
    void NoteSpeed() const {
        if (!take_.framesPerSecond || request_.report) return;
        const std::string note = SpeedNote(*take_.framesPerSecond, StatedRate(take_, result_));
        if (!note.empty()) PrintError(note);
    }

    void PrintReport(const OutputsResult& written) const {
        dataset::ImportReport report = ReportOf(request_.take, result_);
        report.outputs = written.milliseconds;
        report.loadMilliseconds = loadMilliseconds_;
        report.hashMilliseconds = hashMilliseconds_;
        report.diskIsFull = written.diskIsFull;
        ToStdout()(dataset::ReportLine(report));
    }

    void PrintTiming(const OutputsResult& written) const {
        ToStdout()(fmt::format("load_ms={:.3f}\n", loadMilliseconds_));
        if (request_.provenance) ToStdout()(fmt::format("hash_ms={:.3f}\n", hashMilliseconds_));
        for (const std::optional<double>& milliseconds : written.milliseconds)
            if (milliseconds) ToStdout()(fmt::format("write_ms={:.3f}\n", *milliseconds));
    }

    const ImportRequest& request_;
    take::Request take_;  // with the bytes of the standard input, if it is a file
    take::Result result_;
    bool drawsBar_ = false;
    double loadMilliseconds_ = 0.0;
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
