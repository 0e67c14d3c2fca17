// What the end of an import's process means for its row of the index.
#pragma once

#include "dataset/index_file.h"
#include "dataset/job_runner.h"
#include "dataset/jobs.h"

namespace dataset {

IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// What the survey of a job's files told beyond notes.
struct ToldFindings {
    std::string lines;     // as they are printed
    bool refused = false;  // they say why there was no import
};
ToldFindings FindingsOf(const ProcessEnd& end);

// Of a job that is not run.
IndexRow RefusedRow(const Job& job);

}  // namespace dataset
