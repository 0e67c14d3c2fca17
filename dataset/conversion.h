// One run of "zkhost convert" over a data set.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "dataset/index_file.h"
#include "dataset/job_outcome.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"
#include "dataset/ledger.h"
#include "dataset/request.h"

namespace dataset {

// Functions that Conversion::Run calls, on the thread that called Run. For each job, either
// onConverted or onNotConverted is called as soon as the job's row of the index is known. Neither
// is called for a job that was not started because the run was stopped.
struct Watcher {
    // The job was run. The row says whether it succeeded.
    std::function<void(const IndexRow& row, const JobDetails& details)> onConverted;
    // The job was not converted: its output is up to date, or it was refused.
    std::function<void(const IndexRow& row, const JobDetails& details)> onNotConverted;
    // A message for the user about the run as a whole.
    std::function<void(std::string_view message)> onMessage;
};

struct RunEnd {
    std::string index;  // the path of the index; empty if the index could not be written
    // Why the ledger and the index could not be written, a line for each. Empty if both were
    // written.
    std::vector<std::string> problems;
    bool isDiskFull = false;   // the disk was full: the run was stopped, or it has no index
    bool isCancelled = false;  // jobs were stopped or were not started
};

class Conversion {
  public:
    // Lists the jobs. `request` has to outlive this object. Throws RequestError.
    explicit Conversion(const Request& request);

    std::size_t JobCount() const { return jobs_.size(); }
    bool IsEveryJobRefused() const;

    // Runs nothing. Calls `onCommand` for each job that Run would convert, with the arguments of
    // its import (without the program's name). Calls `onNotConverted` for each job that was
    // refused. Also calls it for each job whose output is up to date and whose row of the index is
    // known.
    void Plan(const std::function<void(const std::vector<std::string>&)>& onCommand,
              const std::function<void(const IndexRow&)>& onNotConverted) const;

    // Runs the jobs and writes the index. `starter` starts the jobs' processes; if it is
    // null, this program is started anew for each of them. The run is stopped as soon as a job
    // finds that the disk is full. If the output folder or the ledger cannot be written, throws
    // text::WriteError before any job is started and leaves no file or folder that it has made.
    RunEnd Run(ImportStarter* starter, const Watcher& watcher);

  private:
    enum class Task : std::uint8_t {
        Convert,
        // The output is up to date, but the job's row of the index is not known, because no
        // ledger can be read. The import is run without an output, only to fill in the row.
        FillInRow,
        Nothing,  // the job was refused, or its output is up to date and its row is known
    };

    // Returns what has to be done for the job. Fills in the parts of `row`, the job's row of the
    // index, that are known before the job is run. `ledger` is what Ledger::Read returned. It is
    // nullopt if Request::resume is false.
    Task Prepare(const Job& job, std::optional<Ledger::Content> ledger, IndexRow& row) const;
    std::set<std::string> OutputFolders() const;
    void Start();
    void RunTasks(JobRunner& runner, const Watcher& watcher);
    // Returns the arguments of the job's import.
    std::vector<std::string> CommandOf(std::size_t index) const;
    void RecordEnd(std::size_t index, const ProcessEnd& end, const Watcher& watcher);
    // Returns the row of the index for a job that was run.
    IndexRow RowOf(std::size_t index, const ProcessEnd& end, const JobDetails& details) const;
    // Calls `write`. Adds the problem to `end` and returns false if it throws text::WriteError.
    bool TryToWrite(const std::function<void()>& write, RunEnd& end);
    RunEnd Finish();

    const Request& request_;
    std::vector<Job> jobs_;
    std::vector<IndexRow> rows_;  // one element for each job
    std::vector<Task> tasks_;     // one element for each job
    Ledger ledger_;
    bool otherOptions_ = false;              // the ledger is from a run with other options
    std::set<std::string> foldersOfKilled_;  // the output folders of jobs that were killed
    bool isDiskFull_ = false;  // a file could not be written because its disk has no room
};

}  // namespace dataset
