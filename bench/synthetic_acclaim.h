#pragma once

#include <cstdint>
#include <string>

namespace bench {

struct AcclaimFiles {
    std::string skeleton;
    std::string motion;
};

// The paths of a skeleton of 30 bones and a motion of 62 values a frame, in the temporary folder. A
// process writes them once; the same number of frames gives the same bytes.
AcclaimFiles SyntheticAcclaimFiles(std::int64_t frames);

inline constexpr std::int64_t kAcclaimValues = 62;

}  // namespace bench
