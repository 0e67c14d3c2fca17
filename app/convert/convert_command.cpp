#include "app/convert/convert_command.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>
#include <optional>
#include <set>
#include <string_view>

#include "app/convert/convert_show.h"
#include "app/convert/freshness.h"
#include "app/convert/job_arguments.h"
#include "app/convert/job_outcome.h"
#include "app/convert/jobs.h"
#include "app/convert/ledger.h"
#include "app/convert/output_names.h"
#include "app/outcome.h"
#include "app/plugin_library.h"
#include "app/print.h"
#include "files/leftovers.h"
#include "files/links.h"
#include "files/mended_folder.h"
#include "text/byte_sink.h"
#include "text/path_text.h"
#include "text/shell_words.h"

namespace app {
namespace {

// What is to be done about a job.
enum class Task : std::uint8_t { Convert, LookAgain, Nothing };

std::optional<std::chrono::duration<double>> TimeLimit(const ConvertRequest& request) {
    if (request.timeLimitSeconds <= 0) return std::nullopt;
    // Thirty years, which clocks can hold.
    constexpr double kLongest = 1e9;
    return std::chrono::duration<double>(std::min(request.timeLimitSeconds, kLongest));
}

// One run over a data set.
class Conversion {
  public:
    explicit Conversion(const ConvertRequest& request)
        : request_(request),
          jobs_(ListJobs(request)),
          rows_(jobs_.size()),
          tasks_(jobs_.size(), Task::Convert),
          ledger_(request.outDir + '/' + kLedgerName, OptionsLine(request)) {
        std::optional<Ledger::Found> found;
        if (request.resume) found = ledger_.Read();
        otherOptions_ = found == Ledger::Found::OtherOptions;
        for (std::size_t index = 0; index < jobs_.size(); ++index)
            tasks_[index] = Prepare(jobs_[index], found, rows_[index]);
    }

    int Plan(const std::string& program) const;
    int Run();

  private:
    // Fills in the row as far as it is known before anything is run. `found` is what there is to
    // resume; none: nothing is left out.
    Task Prepare(const Job& job, std::optional<Ledger::Found> found, IndexRow& row) const {
        row.source = job.source;
        if (!job.refusal.empty()) {
            row = RefusedRow(job);
            return Task::Nothing;
        }
        const bool isDone =
            found != Ledger::Found::OtherOptions && IsUpToDate(job, request_.outDir);
        if (!isDone) return Task::Convert;
        // Without a ledger the output was made by a plan.
        if (found == Ledger::Found::Nothing) return Task::LookAgain;
        const IndexRow* noted = ledger_.Find(job);
        if (!noted) return Task::Convert;
        row = *noted;
        return Task::Nothing;
    }

    std::set<std::string> OutputFolders() const {
        std::set<std::string> folders = {request_.outDir};
        for (const Job& job : jobs_)
            folders.insert(fmt::format("{}/{}", request_.outDir, text::FolderPart(job.output)));
        return folders;
    }

    void RunTasks(JobRunner& runner, ConvertShow& show);
    void TakeEnd(std::size_t index, const ProcessEnd& end, ConvertShow& show);
    int Finish(ConvertShow& show);

    const ConvertRequest& request_;
    std::vector<Job> jobs_;
    std::vector<IndexRow> rows_;  // side by side with the jobs
    std::vector<Task> tasks_;     // likewise
    Ledger ledger_;
    bool otherOptions_ = false;
};

int Conversion::Plan(const std::string& program) const {
    ConvertShow show(0);
    for (std::size_t index = 0; index < jobs_.size(); ++index) {
        if (tasks_[index] == Task::Convert) {
            std::vector<std::string> words = ImportArguments(jobs_[index], request_);
            words.insert(words.begin(), program);
            ToStdout()(text::ShellLine(words) + '\n');
        } else if (tasks_[index] == Task::Nothing) {
            show.Take(rows_[index]);
        }
    }
    return show.Failures() > 0 ? kSomeFailed : kImported;
}

int Conversion::Run() {
    // Said once, not by every import.
    const PluginLibrary plugin(request_.plugin);
    const std::size_t parallel = request_.parallel > 0 ? request_.parallel : ProcessorCount();
    JobRunner runner(parallel, TimeLimit(request_));
    try {
        std::filesystem::create_directories(request_.outDir);
        for (const std::string_view name : {kIndexName, std::string_view(kLedgerName)})
            files::RefuseLink(fmt::format("{}/{}", request_.outDir, name));
        ledger_.Start(jobs_, rows_);
    } catch (const std::filesystem::filesystem_error& error) {
        throw text::WriteError(
            fmt::format("cannot make {}: {}", request_.outDir, error.code().message()));
    }
    files::RemoveLeftovers(OutputFolders());
    if (otherOptions_) PrintError("other options than before: everything is converted again");

    ConvertShow show(jobs_.size());
    for (std::size_t index = 0; index < jobs_.size(); ++index)
        if (tasks_[index] == Task::Nothing) show.TakeKnown(rows_[index]);
    RunTasks(runner, show);
    return Finish(show);
}

void Conversion::RunTasks(JobRunner& runner, ConvertShow& show) {
    std::vector<std::size_t> indexes;
    std::vector<std::vector<std::string>> commands;
    for (std::size_t index = 0; index < jobs_.size(); ++index) {
        if (tasks_[index] == Task::Nothing) continue;
        indexes.push_back(index);
        const bool withOutput = tasks_[index] == Task::Convert;
        commands.push_back(ImportArguments(jobs_[index], request_, withOutput));
        commands.back().push_back("--report");
    }
    runner.Run(commands, [&](std::size_t place, const ProcessEnd& end) {
        TakeEnd(indexes[place], end, show);
    });
}

void Conversion::TakeEnd(std::size_t index, const ProcessEnd& end, ConvertShow& show) {
    const Job& job = jobs_[index];
    IndexRow& row = rows_[index];
    row = JudgeJob(job, end);
    const bool lookedAgain = tasks_[index] == Task::LookAgain;
    if (lookedAgain && row.status != JobStatus::Cancelled) row.output = job.output;
    if (row.status == JobStatus::Ok) ledger_.Note(job, row);
    // One that was killed could not clean up.
    if (!end.exitStatus) {
        files::RemoveLeftovers(
            {fmt::format("{}/{}", request_.outDir, text::FolderPart(job.output))});
        files::RemoveMendedFolders(end.id);
    }
    const ToldFindings told = FindingsOf(end);
    lookedAgain ? show.TakeKnown(row, told) : show.Take(row, told);
}

int Conversion::Finish(ConvertShow& show) {
    const std::string index = fmt::format("{}/{}", request_.outDir, kIndexName);
    int status = kImported;
    try {
        ledger_.Start(jobs_, rows_);
        WriteIndex(index, rows_);
    } catch (const text::WriteError& error) {
        PrintError(error.what());
        status = kOutputFailed;
    }
    for (const IndexRow& row : rows_)
        if (row.status == JobStatus::Cancelled) status = kCancelled;
    ToStdout()(show.ClosingLine(index));
    if (status != kImported) return status;
    return show.Failures() > 0 ? kSomeFailed : kImported;
}

}  // namespace

int RunConvert(const ConvertRequest& request, const std::string& program) {
    try {
        Conversion conversion(request);
        return request.plan ? conversion.Plan(program) : conversion.Run();
    } catch (const text::WriteError& error) {
        PrintError(error.what());
        return kOutputFailed;
    }
}

}  // namespace app
