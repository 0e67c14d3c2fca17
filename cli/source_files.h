// Describes the files from which a scene was imported, for its outputs.
#pragma once

#include <vector>

#include "export/options.h"
#include "take/request.h"

namespace cli {

struct SourceFiles {
    std::vector<exporters::SourceFile> files;  // the skeleton or the .bvh first
    double hashMilliseconds = 0.0;             // how long it took to compute the check sums
};

// Returns names and sizes of the request's files and, if `hashes` is set, their SHA-256 check sums
// (FIPS 180-4), as the files are stored: a packed file is not unpacked. If a file cannot be read,
// its size or its check sum is left out.
SourceFiles DescribeSources(const take::Request& request, bool hashes);

}  // namespace cli
