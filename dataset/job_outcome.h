// Finds out from the end of an import's process what became of its job.
#pragma once

#include "dataset/index_file.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"

namespace dataset {

// Returns the job's row of the index.
IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// The warnings and errors that the survey of a job's files reported.
struct ReportedFindings {
    std::string lines;     // the findings as they are printed, one line each
    bool refused = false;  // the files were refused; the lines say why
};
ReportedFindings FindingsOf(const ProcessEnd& end);

// Returns the index row of a job that was refused and is therefore not run.
IndexRow RefusedRow(const Job& job);

}  // namespace dataset
