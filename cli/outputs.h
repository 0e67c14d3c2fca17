// Writes the outputs of an import.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "files/write_file.h"
#include "take/import.h"

namespace cli {

struct OutputsResult {
    bool failed = false;               // an output could not be written; stderr says which and why
    bool interrupted = false;          // the user asked to stop; the remaining outputs were skipped
    std::vector<double> milliseconds;  // how long it took to write each output that was written
};

// Writes the outputs of the request. After a failed import, only JSON records are written. If a
// format cannot contain a part of the scene, prints to stderr what was left out.
OutputsResult WriteOutputs(const ImportRequest& request, const take::Result& result);

// Returns the path of an output, or of its second file, that exists already. Empty if none does.
std::string FindExistingOutput(const ImportRequest& request);

// Calls `write`, which writes one output, and adds its outcome to `result`. Prints errors to
// stderr.
void AddOutput(const std::function<files::WriteOutcome()>& write, OutputsResult& result);

}  // namespace cli
