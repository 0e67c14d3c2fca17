// The capture files behind the paths of a command line, folders walked.
#pragma once

#include <set>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

#include "pairing/capture_kind.h"

namespace dataset {

struct CaptureFile {
    std::string path;   // the path that was named, then what lies below it
    std::string place;  // in the tree that is kept: below the folder that was named
    pairing::CaptureKind kind = pairing::CaptureKind::Biovision;
};

// What was found but cannot be taken.
struct CaptureProblem {
    std::string path;
    std::string error;
};

// A file or folder, by whatever name: device and number.
using FileId = std::pair<dev_t, ino_t>;

struct CaptureTree {
    std::vector<CaptureFile> files;        // sorted by path
    std::vector<CaptureProblem> problems;  // sorted by path
    std::set<FileId> folders;              // those that were walked
};

// Folders are walked once each, by whatever way they are reached, those behind symbolic links last:
// no loop of links keeps it busy. Names that begin with a dot are passed over, and so is `outDir`,
// unless it is named itself. A file that is reached twice counts once, at its first place. Throws
// RequestError for a path that names no folder and no capture file.
CaptureTree FindCaptures(const std::vector<std::string>& paths, const std::string& outDir);

// The names of the skeletons in a folder, sorted; none where it cannot be read. An empty folder is
// the current one.
std::vector<std::string> SkeletonsIn(const std::string& folder);

}  // namespace dataset
