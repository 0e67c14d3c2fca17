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
    std::string output;  // below the output folder; empty: none was written
    JobStatus status = JobStatus::Cancelled;
    // The next four describe what was imported; empty where that is not known.
    std::string joints;
    std::string frames;
    std::string framesPerSecond;
    std::string seconds;
    std::string error;     // the first error
    std::string warnings;  // the number of the survey's warnings; empty where the job was not run
    std::string findings;  // the codes of its findings, separated by spaces
};

// Fills in the joints, the frames, the rate and the seconds.
void RecordMeasures(const ImportReport& report, IndexRow& row);

// Fills in the number of warnings and the codes of the findings.
void RecordFindings(const ImportReport& report, IndexRow& row);

std::string_view NameOf(JobStatus status);

// Writes a header and the rows, in their order. Bytes that are not valid UTF-8 are replaced. Throws
// text::WriteError.
void WriteIndex(const std::string& path, const std::vector<IndexRow>& rows);

}  // namespace dataset
