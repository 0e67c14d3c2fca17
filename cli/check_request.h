// The arguments of "zkhost check".
#pragma once

#include <string>
#include <vector>

namespace cli {

struct CheckRequest {
    std::vector<std::string> files;  // as the user named them
    std::string encoding;            // of names that are not valid UTF-8; empty: Windows-1252
    bool json = false;
    bool strict = false;  // a warning gives exit status 1, as an error does
    bool fix = false;     // write the mended files
    // Where --fix writes to. Exactly one of the two is not empty.
    std::string output;  // the path of the only file
    std::string outDir;  // the folder of all files
};

}  // namespace cli
