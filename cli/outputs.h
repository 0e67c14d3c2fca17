// The files that an import writes.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "files/write_file.h"
#include "take/import.h"

namespace cli {

struct OutputsResult {
    bool failed = false;               // one could not be written; it was said on stderr
    bool interrupted = false;          // the user asked to stop; no further one was begun
    std::vector<double> milliseconds;  // of each that was written
};

// Writes what the request names; of a failed import the record alone. What an export had to leave
// out is said on stderr.
OutputsResult WriteOutputs(const ImportRequest& request, const take::Result& result);

// Adds to the result what came of writing one output; what went wrong is said on stderr.
void AddOutput(const std::function<files::WriteOutcome()>& write, OutputsResult& result);

}  // namespace cli
