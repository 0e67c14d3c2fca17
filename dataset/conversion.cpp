#include "dataset/conversion.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fmt/format.h>

#include "dataset/freshness.h"
#include "dataset/job_arguments.h"
#include "dataset/output_folder.h"
#include "dataset/output_names.h"
#include "files/disk_full.h"
#include "files/leftovers.h"
#include "files/links.h"
#include "files/mended_folder.h"
#include "text/byte_sink.h"

namespace dataset {
namespace {

std::optional<std::chrono::duration<double>> TimeLimit(const Request& request) {
    if (request.timeLimitSeconds <= 0) return std::nullopt;
    // 1e9 seconds are about thirty years. A much larger number would overflow the clock.
    constexpr double kMostSeconds = 1e9;
    return std::chrono::duration<double>(std::min(request.timeLimitSeconds, kMostSeconds));
}

}  // namespace

Conversion::Conversion(const Request& request)
    : request_(request),
      jobs_(ListJobs(request)),
      rows_(jobs_.size()),
      tasks_(jobs_.size(), Task::Convert),
      ledger_(request.outDir + '/' + kLedgerName, OptionsLine(request)) {
    std::optional<Ledger::Content> ledger;
    if (request.resume) ledger = ledger_.Read();
    otherOptions_ = ledger == Ledger::Content::OtherOptions;
    for (std::size_t index = 0; index < jobs_.size(); ++index)
        tasks_[index] = Prepare(jobs_[index], ledger, rows_[index]);
}

Conversion::Task Conversion::Prepare(const Job& job, std::optional<Ledger::Content> ledger,
                                     IndexRow& row) const {
    row.source = job.source;
    if (!job.refusal.empty()) {
        row = RefusedRow(job);
        return Task::Nothing;
    }
    const bool isDone = ledger != Ledger::Content::OtherOptions && IsUpToDate(job, request_.outDir);
    if (!ledger || !isDone) return Task::Convert;
    // There is an output, but no ledger that can be read. For example, the user ran the command
    // lines that --plan printed, or removed the ledger.
    if (ledger == Ledger::Content::Nothing) return Task::FillInRow;
    const IndexRow* noted = ledger_.Find(job);
    if (!noted) return Task::Convert;
    row = *noted;
    return Task::Nothing;
}

std::set<std::string> Conversion::OutputFolders() const {
    std::set<std::string> folders = {request_.outDir};
    for (const Job& job : jobs_)
        folders.insert(fmt::format("{}/{}", request_.outDir, FolderOf(job)));
    return folders;
}

bool Conversion::IsEveryJobRefused() const {
    return std::all_of(jobs_.begin(), jobs_.end(),
                       [](const Job& job) { return !job.refusal.empty(); });
}

void Conversion::Plan(const std::function<void(const std::vector<std::string>&)>& onCommand,
                      const std::function<void(const IndexRow&)>& onNotConverted) const {
    for (std::size_t index = 0; index < jobs_.size(); ++index) {
        if (tasks_[index] == Task::Convert)
            onCommand(ImportArguments(jobs_[index], request_));
        else if (tasks_[index] == Task::Nothing)
            onNotConverted(rows_[index]);
    }
}

void Conversion::Start() {
    try {
        OutputFolder folder(request_.outDir);
        for (const std::string_view name : {kIndexName, std::string_view(kLedgerName)})
            files::RefuseLink(fmt::format("{}/{}", request_.outDir, name));
        ledger_.Start(jobs_, rows_);
        folder.Keep();
    } catch (const std::filesystem::filesystem_error& error) {
        throw text::WriteError(
            fmt::format("cannot create {}: {}", request_.outDir, error.code().message()));
    }
}

RunEnd Conversion::Run(ImportStarter* starter, const Watcher& watcher) {
    const std::size_t parallel = request_.parallel > 0 ? request_.parallel : ProcessorCount();
    JobRunner runner(parallel, TimeLimit(request_), starter);
    Start();
    files::RemoveLeftovers(OutputFolders());
    if (otherOptions_)
        watcher.onMessage("the options differ from the last run: everything is converted again");
    for (std::size_t index = 0; index < jobs_.size(); ++index)
        if (tasks_[index] == Task::Nothing) watcher.onNotConverted(rows_[index], {});
    RunTasks(runner, watcher);
    return Finish();
}

std::vector<std::string> Conversion::CommandOf(std::size_t index) const {
    const bool withOutput = tasks_[index] == Task::Convert;
    std::vector<std::string> words = ImportArguments(jobs_[index], request_, withOutput);
    words.emplace_back("--report");
    return words;
}

void Conversion::RunTasks(JobRunner& runner, const Watcher& watcher) {
    std::vector<std::size_t> indexes;  // of the jobs that have to be run
    for (std::size_t index = 0; index < jobs_.size(); ++index)
        if (tasks_[index] != Task::Nothing) indexes.push_back(index);
    runner.Run(
        indexes.size(), [&](std::size_t import) { return CommandOf(indexes[import]); },
        [&](std::size_t import, const ProcessEnd& end) {
            RecordEnd(indexes[import], end, watcher);
            if (isDiskFull_) runner.Stop();
        });
}

IndexRow Conversion::RowOf(std::size_t index, const ProcessEnd& end,
                           const JobDetails& details) const {
    const Job& job = jobs_[index];
    IndexRow row = JudgeJob(job, end);
    // Other jobs may find the disk full while the run is being stopped for the same reason.
    if (details.diskIsFull && isDiskFull_) {
        row = {};
        row.source = job.source;
    }
    const bool isUpToDate = tasks_[index] == Task::FillInRow;
    if (isUpToDate && row.status != JobStatus::Cancelled) row.output = OutputField(job.outputs);
    return row;
}

void Conversion::RecordEnd(std::size_t index, const ProcessEnd& end, const Watcher& watcher) {
    const Job& job = jobs_[index];
    const JobDetails details = DetailsOf(end);
    IndexRow& row = rows_[index];
    row = RowOf(index, end, details);
    isDiskFull_ |= details.diskIsFull;
    if (row.status == JobStatus::Ok) ledger_.Note(job, row);
    // A process that was killed could not remove its temporary files. The output folder is listed
    // only once, in Finish, and not for each process that was killed.
    if (!end.exitStatus && end.id >= 0) {
        const std::string folder = fmt::format("{}/{}", request_.outDir, FolderOf(job));
        files::RemoveLeftoversOf(end.id, folder);
        files::RemoveMendedFolders(end.id);
        foldersOfKilled_.insert(folder);
    }
    const bool isUpToDate = tasks_[index] == Task::FillInRow;
    isUpToDate ? watcher.onNotConverted(row, details) : watcher.onConverted(row, details);
}

bool Conversion::TryToWrite(const std::function<void()>& write, RunEnd& end) {
    try {
        write();
        return true;
    } catch (const files::DiskFull& error) {
        isDiskFull_ = true;
        end.problems.emplace_back(error.what());
    } catch (const text::WriteError& error) {
        end.problems.emplace_back(error.what());
    }
    return false;
}

RunEnd Conversion::Finish() {
    files::RemoveLeftovers(foldersOfKilled_);
    RunEnd end;
    const std::string index = fmt::format("{}/{}", request_.outDir, kIndexName);
    TryToWrite([&] { ledger_.Start(jobs_, rows_); }, end);
    if (TryToWrite([&] { WriteIndex(index, rows_); }, end)) end.index = index;
    end.isDiskFull = isDiskFull_;
    for (const IndexRow& row : rows_)
        end.isCancelled |= row.status == JobStatus::Cancelled;
    return end;
}

}  // namespace dataset
