// One run over a data set.
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

// What can be watched of a run; called for each job as its row is known, on the calling thread.
struct Watcher {
    std::function<void(const IndexRow& row, const ToldFindings& told)> onConverted;
    // What did not have to be converted.
    std::function<void(const IndexRow& row, const ToldFindings& told)> onKnown;
    // What a person should know of the run as a whole.
    std::function<void(std::string_view message)> onMessage;
};

struct RunEnd {
    std::string index;         // the path of the index
    std::string indexProblem;  // why it could not be written; empty: it was
    bool isCancelled = false;  // some jobs were not run, or not to their end
};

class Conversion {
  public:
    // `request` has to outlive it. Throws RequestError.
    explicit Conversion(const Request& request);

    std::size_t JobCount() const { return jobs_.size(); }

    // Calls `onCommand` with the words of a command line, without the program, for each import that
    // is to be done, and `onRefused` for each job that is not to be run.
    void Plan(const std::function<void(const std::vector<std::string>&)>& onCommand,
              const std::function<void(const IndexRow&)>& onRefused) const;

    // Runs what is to be run and writes the index. Throws text::WriteError before anything is run.
    RunEnd Run(const Watcher& watcher);

  private:
    // What is to be done about a job.
    enum class Task : std::uint8_t { Convert, LookAgain, Nothing };

    Task Prepare(const Job& job, std::optional<Ledger::Found> found, IndexRow& row) const;
    std::set<std::string> OutputFolders() const;
    void Start();
    void RunTasks(JobRunner& runner, const Watcher& watcher);
    void RecordEnd(std::size_t index, const ProcessEnd& end, const Watcher& watcher);
    RunEnd Finish();

    const Request& request_;
    std::vector<Job> jobs_;
    std::vector<IndexRow> rows_;  // side by side with the jobs
    std::vector<Task> tasks_;     // likewise
    Ledger ledger_;
    bool otherOptions_ = false;
};

}  // namespace dataset
