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
    // The path that the user wrote. For a file in a folder that the user named, the path of the
    // folder, then the path from it to the file.
    std::string path;
    // The path from the folder that the user named to the file. If the user named the file itself,
    // its name without a folder.
    std::string relativePath;
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
};

// A capture file or a folder that was found but cannot be read.
struct CaptureProblem {
    std::string path;
    std::string error;  // why it cannot be read, for the user
};

// The device and the inode of a file or folder. They are the same for all paths that lead to it.
using FileId = std::pair<dev_t, ino_t>;

struct CaptureTree {
    std::vector<CaptureFile> files;        // sorted by path
    std::vector<CaptureProblem> problems;  // sorted by path
    std::set<FileId> folders;              // every folder that was searched
};

// Searches the paths and all folders below them. Symbolic links to folders are followed last. Each
// folder is searched only once, even if several paths lead to it, so a loop of links does no harm.
// Names that begin with a dot are skipped, and so is `outDir`, unless the user named them. If two
// paths have the same absolute path, such as "x.bvh" and "./x.bvh", only the one that was found
// first is listed. Throws RequestError for a path that is neither a folder nor a capture file.
CaptureTree FindCaptures(const std::vector<std::string>& paths, const std::string& outDir);

// Returns the names of the .asf files in a folder, sorted; none if the folder cannot be read.
// `folder` ends with a slash; an empty text means the current folder.
std::vector<std::string> SkeletonsIn(const std::string& folder);

}  // namespace dataset
