// The arguments of "zkhost check".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "pairing/capture_kind.h"

namespace cli {

struct CheckRequest {
    std::vector<std::string> files;  // the paths of the files, as the user wrote them
    // What the standard input is; nullopt if none of the files is "-".
    std::optional<pairing::CaptureKind> as;
    // Names in the files that are not valid UTF-8 are decoded with this encoding. It is written as
    // iconv names it. Empty: Windows-1252.
    std::string encoding;
    bool json = false;    // print JSON objects instead of lines for people
    bool strict = false;  // a warning gives exit status 1, as an error does
    bool fix = false;     // write the mended files
    // If `fix` is true, exactly one of `output` and `outDir` is empty. If `fix` is false, both are
    // empty.
    std::string output;  // the path to write the mended file to, if there is only one file
    std::string outDir;  // the folder to write all mended files to
};

}  // namespace cli
