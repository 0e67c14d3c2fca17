// The summary that "zkhost convert" prints at its end.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "dataset/conversion.h"

namespace cli {

// What became of the jobs of a run.
struct ConvertCounts {
    std::size_t total = 0;  // all jobs
    std::size_t converted = 0;
    std::size_t upToDate = 0;
    std::size_t partial = 0;
    std::size_t failed = 0;
    std::map<std::string, std::size_t> filesByCode;  // the number of jobs with each finding code

    std::size_t imports = 0;  // how many imports were run to their end
    // The sums over these imports. Several of them may have run at the same time.
    double loadMilliseconds = 0.0;
    double hashMilliseconds = 0.0;
    double writeMilliseconds = 0.0;

    std::size_t Failures() const { return failed + partial; }
    std::size_t Done() const { return converted + upToDate + partial + failed; }
};

// Returns the lines of the summary: the number of jobs and what became of them, a line for each
// finding code, the time and the rate if an import was run, and the path of the index if it was
// written. `seconds` is how long the run took. `timing` adds lines for programs to read.
std::string ConvertSummary(const ConvertCounts& counts, const dataset::RunEnd& end, double seconds,
                           bool timing);

}  // namespace cli
