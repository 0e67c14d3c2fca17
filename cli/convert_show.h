// Prints what "zkhost convert" tells the user while it runs, and counts jobs for its summary.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "cli/convert_summary.h"
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
    std::size_t Failures() const { return counts_.Failures(); }
    // Removes the progress line and prints why the run did not end as it should: because of a full
    // disk, or because the ledger or the index could not be written.
    void PrintProblems(const dataset::RunEnd& end);
    // Removes the progress line. Returns the ConvertSummary of the run, which began when this
    // object was created.
    std::string Summary(const dataset::RunEnd& end, bool timing);

  private:
    // `okCount` is the counter that is increased if the row's status is Ok.
    void Record(const dataset::IndexRow& row, const dataset::JobDetails& details,
                std::size_t& okCount);
    void Draw();

    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    ConvertCounts counts_;
    std::optional<ProgressLine> bar_;  // nullopt if there is no progress line
};

}  // namespace cli
