#pragma once

#include <string>
#include <vector>

#include "dataset/jobs.h"
#include "dataset/request.h"

namespace dataset {

// The arguments of zkhost that run the job; they alone decide what its output holds. `withOutput`:
// without it, only look at what the import brings.
std::vector<std::string> ImportArguments(const Job& job, const Request& request,
                                         bool withOutput = true);

// What the outputs of a data set depend on besides their inputs, in one line.
std::string OptionsLine(const Request& request);

}  // namespace dataset
