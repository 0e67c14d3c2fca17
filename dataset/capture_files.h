// Finds the capture files under the paths of a command line.
#pragma once

#include <set>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "pairing/capture_kind.h"

namespace dataset {

struct CaptureFile {
    std::string path;          // as the user wrote it, with the path below that folder added
    std::string relativePath;  // below the folder that the user named; a named file: its base name
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
};

// A capture file or a folder that was found but cannot be read.
struct CaptureProblem {
    std::string path;
    std::string error;
};

// Identifies a file or folder whatever path leads to it: its device and its inode.
using FileId = std::pair<dev_t, ino_t>;

struct CaptureTree {
    std::vector<CaptureFile> files;        // sorted by path
    std::vector<CaptureProblem> problems;  // sorted by path
    std::set<FileId> folders;              // every folder that was searched
};

// Searches the paths and all folders below them. Each folder is searched once, whatever paths lead
// to it, and symbolic links to folders are followed last, so loops of links do no harm. Names that
// begin with a dot are skipped, and so is `outDir`, unless the user named it. A file that is found
// twice is listed once, with the path that was found first. Throws RequestError for a path that is
// neither a folder nor a capture file.
CaptureTree FindCaptures(const std::vector<std::string>& paths, const std::string& outDir);

// Returns the names of the .asf files in a folder, sorted; none where it cannot be read. `folder`
// ends with a slash; an empty text is the current folder.
std::vector<std::string> SkeletonsIn(const std::string& folder);

}  // namespace dataset
