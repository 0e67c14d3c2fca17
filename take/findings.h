// The findings of an import's surveys, one list for each file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace take {

// The findings of one file, sorted by line.
struct FileFindings {
    std::string file;  // the file's path as the user wrote it
    std::vector<survey::Finding> findings;
};

// Returns each finding as a JSON object. If there are several files, each object names its file.
ZKMOCAP_API std::vector<std::string> FindingsJson(const std::vector<FileFindings>& files);

// Returns the frame of each finding, in the order of FindingsJson.
ZKMOCAP_API std::vector<std::optional<std::int64_t>> FramesOf(
    const std::vector<FileFindings>& files);

// A finding and the file that it is about. If there is no finding, both pointers are null.
struct FindingInFile {
    const FileFindings* file = nullptr;
    const survey::Finding* finding = nullptr;
};
// Returns the finding that explains why the files were refused. This is the first error. If there
// is no error, it is the first warning, because Request::strict refuses files for a warning. The
// result points into `files`.
FindingInFile RefusalOf(const std::vector<FileFindings>& files);

}  // namespace take
