// The files that an import writes.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app/arguments.h"
#include "app/json_record.h"
#include "app/outcome.h"
#include "app/output_file.h"

namespace app {

struct OutputsResult {
    bool failed = false;               // one could not be written; it was said on stderr
    bool interrupted = false;          // the user asked to stop; no further one was begun
    std::vector<double> milliseconds;  // of each that was written
};

// Writes what the request names; of a failed import the record alone. What an export had to leave
// out is said on stderr.
OutputsResult WriteOutputs(const ImportRequest& request, const RunRecord& record,
                           const Outcome& outcome);

// Writes one file by `write`, whole or not at all, and adds to the result what came of it.
void WriteOutput(const std::string& path, const std::function<void(OutputFile&)>& write,
                 OutputsResult& result);

}  // namespace app
