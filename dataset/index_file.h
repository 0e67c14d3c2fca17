// What became of each file of a data set.
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
    std::string output;  // empty: none was written
    JobStatus status = JobStatus::Cancelled;
    // Of what was imported; empty where it is not known.
    std::string joints;
    std::string frames;
    std::string framesPerSecond;
    std::string seconds;
    std::string error;     // the first
    std::string warnings;  // how many the survey told; empty where there was none
    std::string findings;  // its codes, with blanks between
};

// Fills in what the import brought.
void TakeFacts(const ImportReport& report, IndexRow& row);

// Fills in what the survey found.
void RecordFindings(const ImportReport& report, IndexRow& row);

std::string_view NameOf(JobStatus status);

// Writes the rows as they are, under a header; always valid UTF-8. Throws text::WriteError.
void WriteIndex(const std::string& path, const std::vector<IndexRow>& rows);

}  // namespace dataset
