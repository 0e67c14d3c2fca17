// The findings of an import's surveys, one list for each file.
#pragma once

#include <string>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace take {

// The findings of one file, sorted by line.
struct FileFindings {
    std::string file;  // as the user named it
    std::vector<survey::Finding> findings;
};

// Returns each finding as a JSON object. Where there are several files, each object names its file.
ZKMOCAP_API std::vector<std::string> FindingsJson(const std::vector<FileFindings>& files);

// A finding and the file that it is about. Both are null where there is no such finding.
struct FindingInFile {
    const FileFindings* file = nullptr;
    const survey::Finding* finding = nullptr;
};
// Returns the finding for which refused files were refused: the first error or, where there is no
// error, the first warning, which refuses a strict import. The result points into `files`.
FindingInFile RefusalOf(const std::vector<FileFindings>& files);

}  // namespace take
