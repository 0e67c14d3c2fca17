// The result of an import as one line of JSON, which "zkhost convert" reads from its child process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dataset {

struct ImportReport {
    std::size_t joints = 0;  // without end sites; the sum over all models
    // `frames`, `framesPerSecond` and `seconds` describe the model with the most frames. The rate
    // and the duration are nullopt if there is no motion or its rate is not known. The duration
    // includes that of the last frame.
    std::size_t frames = 0;
    std::optional<double> framesPerSecond;
    std::optional<double> seconds;
    // One element for each output, in the order of the command line: how many milliseconds it took
    // to write the output, or nullopt if it was not written.
    std::vector<std::optional<double>> outputs;
    // If the survey refused the files, the finding that is the reason. If it did not, the first
    // error of the log. If the import has a motion file and the error is about the skeleton, the
    // text begins with the skeleton's path. Empty if there was no error.
    std::string error;
    bool refused = false;  // the survey refused the files
    struct ReportedFinding {
        std::string code;
        std::string severity;  // "note", "warning", "error"
        std::string line;      // the finding as it is printed, with a line feed at the end
    };
    std::vector<ReportedFinding> findings;  // in the order in which the survey reported them
    double loadMilliseconds = 0.0;          // how long the survey and the import took together
    double hashMilliseconds = 0.0;          // how long the check sums of the files took
    bool diskIsFull = false;  // an output could not be written because its disk has no room
};

// Returns the report as one line of JSON, with a line feed at the end. The report's texts must be
// valid UTF-8.
std::string ReportLine(const ImportReport& report);
// Reads a line that ReportLine returned. Returns nullopt if the text is not such a line.
std::optional<ImportReport> ReadReport(std::string_view line);

}  // namespace dataset
