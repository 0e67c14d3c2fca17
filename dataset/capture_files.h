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
    // If the user named the file itself, the path that the user wrote. If the user named a folder
    // above the file, the path of that folder, followed by `relativePath`.
    std::string path;
    // If the user named the file itself, the name of the file without a folder. If the user named a
    // folder above the file, the path from that folder to the file.
    std::string relativePath;
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
};

// A capture file or a folder that was found but cannot be read.
struct CaptureProblem {
    std::string path;
    std::string error;  // why it cannot be read, for the user
};

// The numbers of the device and of the inode of a file or folder. All paths that lead to the same
// file give the same numbers.
using FileId = std::pair<dev_t, ino_t>;

struct CaptureTree {
    std::vector<CaptureFile> files;        // sorted by path
    std::vector<CaptureProblem> problems;  // sorted by path
    std::set<FileId> folders;              // every folder that was searched
};

// Searches the paths and all folders below them. Symbolic links to folders are followed after all
// other folders have been searched. Each folder is searched only once, even if several paths lead
// to it, so a loop of links does no harm. Inside the searched folders, names that begin with a dot
// are skipped, and the folder `outDir` is skipped too. These two rules do not apply to a path that
// the user named. If two paths have the same absolute path, such as "x.bvh" and "./x.bvh", only the
// one that was found first is listed. Throws RequestError for a path that is neither a folder nor a
// capture file.
CaptureTree FindCaptures(const std::vector<std::string>& paths, const std::string& outDir);

// Returns the names of the .asf files in a folder, sorted. If the folder cannot be read, returns no
// names. `folder` ends with a slash; an empty text means the current folder.
std::vector<std::string> SkeletonsIn(const std::string& folder);

}  // namespace dataset
