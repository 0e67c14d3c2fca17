#pragma once

#include <string_view>

namespace fuzz {

// The first two bytes hold options, the rest is a BVH file or, where it begins with ":", an ASF
// file and behind "~" an AMC file. Whatever scene comes out is written in every format: each file
// is whole or is refused without one being left behind, and an exported BVH can be imported again.
void CheckExports(std::string_view input);

}  // namespace fuzz
