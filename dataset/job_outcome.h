// Finds out from the end of an import's process what became of its job.
#pragma once

#include "dataset/index_file.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"

namespace dataset {

// Returns the job's row of the index.
IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// What is known about a job beside its row of the index. If the job gave no report, only `wasRun`
// is known.
struct JobDetails {
    bool wasRun = false;  // the job's import was run; it may have failed
    // The warnings and errors that the survey found, as they are printed, one line each.
    std::string findings;
    bool refused = false;            // the files were refused; the findings say why
    bool diskIsFull = false;         // an output could not be written because its disk has no room
    double loadMilliseconds = 0.0;   // how long the survey and the import took
    double hashMilliseconds = 0.0;   // how long the check sums of the files took
    double writeMilliseconds = 0.0;  // how long it took to write all outputs that were written
};
JobDetails DetailsOf(const ProcessEnd& end);

// Returns the index row of a job that was refused and is therefore not run.
IndexRow RefusedRow(const Job& job);

}  // namespace dataset
