#pragma once

#include <string_view>

namespace fuzz {

// The first two bytes hold the options. The rest is a BVH file or, if it begins with ":", an ASF
// file and, after "~", an AMC file. The scene is written in every format, even after a failed
// import. An export writes whole files, or is refused and leaves no file. An exported BVH can be
// imported again.
void CheckExports(std::string_view input);

}  // namespace fuzz
