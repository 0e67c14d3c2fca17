#pragma once

#include <string>
#include <vector>

#include "app/convert/convert_request.h"
#include "app/convert/jobs.h"

namespace app {

// The arguments of zkhost that run the job; they alone decide what its output holds. `withOutput`:
// without it, only look at what the import brings.
std::vector<std::string> ImportArguments(const Job& job, const ConvertRequest& request,
                                         bool withOutput = true);

// What the outputs of a data set depend on besides their inputs, in one line.
std::string OptionsLine(const ConvertRequest& request);

}  // namespace app
