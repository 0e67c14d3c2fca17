#pragma once

#include <string>
#include <vector>

#include "dataset/jobs.h"
#include "dataset/request.h"

namespace dataset {

// Returns the arguments of zkhost that run the job. The output depends on these and on the job's
// files alone. With `withOutput` false the import writes no output; it is run only for its report.
std::vector<std::string> ImportArguments(const Job& job, const Request& request,
                                         bool withOutput = true);

// Returns, in one line, everything that the outputs of a data set depend on except their inputs.
std::string OptionsLine(const Request& request);

}  // namespace dataset
