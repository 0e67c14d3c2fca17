// What an import brought, for the program that started it: one line of JSON.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dataset {

struct ImportReport {
    std::size_t joints = 0;  // of all models
    // Of the model with the most frames.
    std::size_t frames = 0;
    std::optional<double> framesPerSecond;  // none: the motion does not tell, or there is none
    std::optional<double> seconds;          // likewise; a frame lasts until the next one
    bool written = false;                   // an output was
    // The first error of the survey or in the log, with the file before it where that is not the
    // motion; empty: none.
    std::string error;
    bool refused = false;  // for what the survey found
    // What the survey found, in order.
    struct FoundCode {
        std::string code;
        std::string severity;  // "note", "warning", "error"
        std::string line;      // as it is printed, with its line feed
    };
    std::vector<FoundCode> findings;
};

// With its line feed.
std::string ReportLine(const ImportReport& report);
// None where the text is no such line.
std::optional<ImportReport> ReadReport(std::string_view line);

}  // namespace dataset
