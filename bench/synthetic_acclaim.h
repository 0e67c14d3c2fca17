#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct AcclaimFiles {
    std::string skeleton;  // the path of the ASF file
    std::string motion;    // the path of the AMC file
};

// Writes an ASF file with 30 bones and an AMC file with `frames` frames to the temporary folder,
// and returns their paths. If the process has already written these files, only the paths are
// returned. The same number of frames always gives the same bytes.
AcclaimFiles SyntheticAcclaimFiles(std::int64_t frames);

// The number of values in each frame of the AMC file.
inline constexpr std::int64_t kAcclaimValues = 62;

}  // namespace bench
