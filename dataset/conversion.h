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

// Functions that a run calls, on the calling thread. One of the first two is called for each job as
// soon as its row of the index is known; neither for a job that a cancelled run did not start.
struct Watcher {
    // The job was run, successfully or not.
    std::function<void(const IndexRow& row, const ReportedFindings& findings)> onConverted;
    // The job was not converted: its output is up to date, or it was refused.
    std::function<void(const IndexRow& row, const ReportedFindings& findings)> onNotConverted;
    // A message for the user about the run as a whole.
    std::function<void(std::string_view message)> onMessage;
};

struct RunEnd {
    std::string index;         // the path of the index
    std::string indexProblem;  // why the index could not be written; empty: it was written
    bool isCancelled = false;  // some jobs were not started or were stopped
};

class Conversion {
  public:
    // Lists the jobs. `request` has to outlive this object. Throws RequestError.
    explicit Conversion(const Request& request);

    std::size_t JobCount() const { return jobs_.size(); }

    // Runs nothing. Calls `onCommand` with the command line of each import that Run would start,
    // without the program's name, and `onNotConverted` with the row of every other job.
    void Plan(const std::function<void(const std::vector<std::string>&)>& onCommand,
              const std::function<void(const IndexRow&)>& onNotConverted) const;

    // Runs the jobs and writes the index. Throws text::WriteError where the output folder or the
    // ledger cannot be written; then no job was started.
    RunEnd Run(const Watcher& watcher);

  private:
    enum class Task : std::uint8_t {
        Convert,
        // The output is up to date, but no ledger holds its row of the index. The import is run
        // without an output, only to fill in the row.
        FillInRow,
        Nothing,  // refused, or up to date with a known row
    };

    // `ledger` is what Ledger::Read returned; none: the run is no resumed one. Fills in the row as
    // far as it is known before the job is run.
    Task Prepare(const Job& job, std::optional<Ledger::Content> ledger, IndexRow& row) const;
    std::set<std::string> OutputFolders() const;
    void Start();
    void RunTasks(JobRunner& runner, const Watcher& watcher);
    void RecordEnd(std::size_t index, const ProcessEnd& end, const Watcher& watcher);
    RunEnd Finish();

    const Request& request_;
    std::vector<Job> jobs_;
    std::vector<IndexRow> rows_;  // one element for each job
    std::vector<Task> tasks_;     // one element for each job
    Ledger ledger_;
    bool otherOptions_ = false;  // the run to be resumed had other options
};

}  // namespace dataset
