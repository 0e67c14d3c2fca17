// Turns the end of an import's process into its row of the index.
#pragma once

#include "dataset/index_file.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"

namespace dataset {

IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// The warnings and errors of the survey of a job's files.
struct ReportedFindings {
    std::string lines;     // as they are printed, one line each
    bool refused = false;  // the files were refused; the lines say why
};
ReportedFindings FindingsOf(const ProcessEnd& end);

// Returns the row of a job that was refused and is therefore not run.
IndexRow RefusedRow(const Job& job);

}  // namespace dataset
