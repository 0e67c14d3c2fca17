// Writes the outputs of an import.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/arguments.h"
#include "files/write_file.h"
#include "take/import.h"

namespace cli {

struct OutputsResult {
    bool failed = false;             // an output could not be written; stderr says which and why
    bool diskIsFull = false;         // an output could not be written: its disk has no room
    bool interrupted = false;        // the user asked to stop; the remaining outputs were skipped
    std::vector<std::string> files;  // paths of the files that were written
    std::string cancelled;           // path of the output that was being written then
    // How long it took to write each output, in the order of the request. nullopt if the output was
    // not written. If the user asked to stop, the outputs that were skipped have no element.
    std::vector<std::optional<double>> milliseconds;
};

// Writes the outputs of the request. After a failed import, only JSON records are written. If a
// format cannot contain a part of the scene, prints to stderr what was left out. If `drawsBar` is
// set, draws a bar on stderr while an output is written.
// `sources` describes the files of the import.
OutputsResult WriteOutputs(const ImportRequest& request, const take::Result& result,
                           const std::vector<exporters::SourceFile>& sources, bool drawsBar);

// Returns the path of an output, or of its second file, that exists already. Empty if none does.
std::string FindExistingOutput(const ImportRequest& request);

// Calls `write`, which writes one output, and adds its outcome to `result`. `paths` are the files
// of the output. Prints errors to stderr.
void AddOutput(const std::function<files::WriteOutcome()>& write,
               const std::vector<std::string>& paths, OutputsResult& result);

// Returns a message for a user who has cancelled while the output `path` was written. `kept` are
// the files that were written before.
std::string CancelledMessage(const std::string& path, const std::vector<std::string>& kept);

}  // namespace cli
