// A conversion as the person before the terminal sees it.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "cli/progress_line.h"
#include "dataset/job_outcome.h"

namespace cli {

// A line on stderr for each failure, as it happens; on a terminal, how far things are below them.
class ConvertShow {
  public:
    // `total`: jobs on the whole; 0: nothing is run.
    explicit ConvertShow(std::size_t total);

    void Take(const dataset::IndexRow& row, const dataset::ToldFindings& told = {});
    // What did not have to be converted.
    void TakeKnown(const dataset::IndexRow& row, const dataset::ToldFindings& told = {});

    // A line about the run as a whole.
    void Say(std::string_view message);

    // Jobs that did not go well altogether.
    std::size_t Failures() const { return failed_ + partial_; }
    // "12 converted, 3 up to date, 1 failed", how many files have which findings, and the index.
    std::string ClosingLine(const std::string& index);

  private:
    void Count(const dataset::IndexRow& row, const dataset::ToldFindings& told,
               std::size_t& whenOk);
    void Draw();

    std::size_t total_;
    std::size_t converted_ = 0;
    std::size_t known_ = 0;
    std::size_t partial_ = 0;
    std::size_t failed_ = 0;
    std::map<std::string, std::size_t> filesByCode_;
    std::optional<ProgressLine> bar_;
};

}  // namespace cli
