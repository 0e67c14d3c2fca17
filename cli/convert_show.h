// What "zkhost convert" shows to the user while it runs, and its summary.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "cli/progress_line.h"
#include "dataset/job_outcome.h"

namespace cli {

// Prints each failure to stderr as it happens. On a terminal, a progress line follows below.
class ConvertShow {
  public:
    // `total` is the number of all jobs; 0: nothing is run, and there is no progress line.
    explicit ConvertShow(std::size_t total);

    // Counts a job, and prints its warnings and errors.
    void RecordConverted(const dataset::IndexRow& row,
                         const dataset::ReportedFindings& findings = {});
    // The same for a job that was not converted because it is up to date or was refused.
    void RecordNotConverted(const dataset::IndexRow& row,
                            const dataset::ReportedFindings& findings = {});

    // Prints a line about the run as a whole.
    void PrintMessage(std::string_view message);

    // How many jobs failed or were imported only in part.
    std::size_t Failures() const { return failed_ + partial_; }
    // Removes the progress line. Returns "12 converted, 3 up to date, 1 failed", a line for each
    // code with the number of files that have such a finding, and the path of the index.
    std::string Summary(const std::string& index);

  private:
    // `okCount` is the counter to increase where the row's status is Ok.
    void Record(const dataset::IndexRow& row, const dataset::ReportedFindings& findings,
                std::size_t& okCount);
    void Draw();

    std::size_t total_;
    std::size_t converted_ = 0;
    std::size_t upToDate_ = 0;
    std::size_t partial_ = 0;
    std::size_t failed_ = 0;
    std::map<std::string, std::size_t> filesByCode_;
    std::optional<ProgressLine> bar_;
};

}  // namespace cli
