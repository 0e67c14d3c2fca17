// Prints what "zkhost convert" tells the user while it runs, and counts jobs for its summary.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "cli/progress_line.h"
#include "dataset/conversion.h"
#include "dataset/job_outcome.h"

namespace cli {

// Prints findings and failures to stderr as soon as they are known. If stderr is a terminal, the
// line below them shows the progress.
class ConvertShow {
  public:
    // `total` is the number of all jobs. It is 0 for --plan, which needs no progress line. The
    // progress line is drawn at once.
    explicit ConvertShow(std::size_t total);

    // Counts a job that was run, and prints its warnings and errors. Ignores a cancelled job.
    void RecordConverted(const dataset::IndexRow& row, const dataset::JobDetails& details = {});
    // Counts a job that was not converted, and prints its warnings and errors. Such a job was
    // refused, or its output is up to date. Ignores a cancelled job.
    void RecordNotConverted(const dataset::IndexRow& row, const dataset::JobDetails& details = {});

    // Prints a message about the whole run.
    void PrintMessage(std::string_view message);

    // How many jobs failed or were imported only in part.
    std::size_t Failures() const { return failed_ + partial_; }
    // Removes the progress line and prints why the run did not end as it should: because of a full
    // disk, or because the ledger or the index could not be written.
    void PrintProblems(const dataset::RunEnd& end);
    // Removes the progress line. Returns the summary: a line such as "12 converted, 3 up to date,
    // 1 failed", a line for each finding code with the number of jobs that have it, and a line with
    // the path of the index if it was written.
    std::string Summary(const dataset::RunEnd& end);

  private:
    // `okCount` is the counter that is increased if the row's status is Ok.
    void Record(const dataset::IndexRow& row, const dataset::JobDetails& details,
                std::size_t& okCount);
    void Draw();

    std::size_t total_;
    std::size_t converted_ = 0;
    std::size_t upToDate_ = 0;
    std::size_t partial_ = 0;
    std::size_t failed_ = 0;
    std::map<std::string, std::size_t> filesByCode_;  // the number of jobs with each finding code
    std::optional<ProgressLine> bar_;                 // nullopt if there is no progress line
};

}  // namespace cli
