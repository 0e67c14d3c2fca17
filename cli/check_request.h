// What the user asked of "zkhost check".
#pragma once

#include <string>
#include <vector>

namespace cli {

struct CheckRequest {
    std::vector<std::string> files;  // as the user named them
    std::string encoding;            // of names; empty: none named
    bool json = false;
    bool strict = false;  // a warning fails too
    bool fix = false;
    // Of --fix: one of them is given.
    std::string output;
    std::string outDir;
};

}  // namespace cli
