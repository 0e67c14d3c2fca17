// Finds out from the end of an import's process what became of its job.
#pragma once

#include "dataset/index_file.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"

namespace dataset {

// Returns the job's row of the index.
IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// What a job reported beside its row of the index. It is empty if the job gave no report.
struct JobDetails {
    // The warnings and errors that the survey found, as they are printed, one line each.
    std::string findings;
    bool refused = false;     // the files were refused; the findings say why
    bool diskIsFull = false;  // an output could not be written because its disk has no room
};
JobDetails DetailsOf(const ProcessEnd& end);

// Returns the index row of a job that was refused and is therefore not run.
IndexRow RefusedRow(const Job& job);

}  // namespace dataset
