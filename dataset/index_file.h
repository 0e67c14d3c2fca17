// The index of a data set: a CSV file with one row for each job.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dataset/import_report.h"

namespace dataset {

enum class JobStatus : std::uint8_t { Ok, Partial, Failed, Cancelled };

struct IndexRow {
    std::string source;
    // The OutputField of the outputs that exist; empty if there is none.
    std::string output;
    JobStatus status = JobStatus::Cancelled;
    // The next four members describe what was imported. Each is empty if it is not known.
    std::string joints;
    std::string frames;
    std::string framesPerSecond;
    std::string seconds;
    std::string error;     // the first error; empty if the job succeeded or was cancelled
    std::string warnings;  // the number of the survey's warnings; empty without a report
    std::string findings;  // the codes of the survey's findings, separated by spaces
};

// Returns the text of the index's column "output" for outputs with these paths: the paths,
// separated by "|". A file name that contains "|" itself is not marked.
std::string OutputField(const std::vector<std::string>& paths);

// Copies the joints, the frames, the rate and the seconds of the report into the row.
void RecordMeasures(const ImportReport& report, IndexRow& row);

// Copies the number of warnings and the codes of the findings into the row. A code that several
// findings have is listed once.
void RecordFindings(const ImportReport& report, IndexRow& row);

std::string_view NameOf(JobStatus status);

// Writes the CSV file: a header, then the rows in their order. Bytes that are not valid UTF-8 are
// replaced by U+FFFD. Throws text::WriteError.
void WriteIndex(const std::string& path, const std::vector<IndexRow>& rows);

}  // namespace dataset
