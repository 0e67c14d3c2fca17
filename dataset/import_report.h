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
    std::size_t joints = 0;  // the sum over all models
    // The next three describe the model with the most frames.
    std::size_t frames = 0;
    std::optional<double> framesPerSecond;  // none: there is no motion, or its rate is not known
    std::optional<double> seconds;          // none: likewise. The last frame counts as one frame.
    bool written = false;                   // at least one output was written
    // The finding that refused the files, or the first error of the log. It begins with the file's
    // name where it is about the skeleton of a motion. Empty: there was no error.
    std::string error;
    bool refused = false;  // the survey refused the files
    struct ReportedFinding {
        std::string code;
        std::string severity;  // "note", "warning", "error"
        std::string line;      // as it is printed, with its line feed
    };
    std::vector<ReportedFinding> findings;  // in the order in which the survey reported them
};

// Returns the report as one line, with its line feed.
std::string ReportLine(const ImportReport& report);
// Returns nothing where the text is not such a line.
std::optional<ImportReport> ReadReport(std::string_view line);

}  // namespace dataset
