// What the end of an import's process means for its row of the index.
#pragma once

#include "app/convert/index_file.h"
#include "app/convert/job_runner.h"
#include "app/convert/jobs.h"

namespace app {

IndexRow JudgeJob(const Job& job, const ProcessEnd& end);

// Of a job that is not run.
IndexRow RefusedRow(const Job& job);

}  // namespace app
