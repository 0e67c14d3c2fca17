// The joints of a capture file, as the file lists them.
// Part of the public surface of the library.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

namespace exporters {

struct FileJoint {
    static constexpr std::size_t kNoParent = std::numeric_limits<std::size_t>::max();

    std::string name;  // UTF-8; several joints may have the same name
    // Index of the parent in the list; kNoParent for a root. A parent comes before its children.
    std::size_t parent = kNoParent;
    bool isEndSite = false;
};

// The joints and end sites of the skeleton from which one model was made.
using FileSkeleton = std::vector<FileJoint>;

}  // namespace exporters
