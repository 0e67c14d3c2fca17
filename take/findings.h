// What surveys found, file by file.
#pragma once

#include <string>
#include <vector>

#include "survey/finding.h"
#include "text/api.h"

namespace take {

// The findings of one file, by line.
struct FileFindings {
    std::string file;  // as the user named it
    std::vector<survey::Finding> findings;
};

// Each finding of the files as a JSON object. Where there are several files, each says its own.
ZKMOCAP_API std::vector<std::string> FindingsJson(const std::vector<FileFindings>& files);

// A finding and the file that it is about.
struct FoundIn {
    const FileFindings* file = nullptr;
    const survey::Finding* finding = nullptr;
};
// Of files that were refused, the finding that says why: the first error or, in a strict import,
// the first warning. Refers to `files`; both null where nothing refuses them.
FoundIn RefusalOf(const std::vector<FileFindings>& files);

}  // namespace take
