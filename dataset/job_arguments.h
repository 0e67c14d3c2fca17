#pragma once

#include <string>
#include <vector>

#include "dataset/jobs.h"
#include "dataset/request.h"

namespace dataset {

// Returns the arguments with which zkhost runs the job, without the program's name. If `withOutput`
// is false, the import writes no outputs and only gives its report.
std::vector<std::string> ImportArguments(const Job& job, const Request& request,
                                         bool withOutput = true);

// Returns one line with the program's version and all options that change the outputs. A resumed
// run compares this line with the line in the ledger, which an earlier run wrote.
std::string OptionsLine(const Request& request);

}  // namespace dataset
