#pragma once

#include <string_view>

namespace fuzz {

// The first byte holds the options, the rest is a BVH file. Imports it as the plug-in would, and
// requires a sound scene and a known status. If the file can be imported both as nulls and as
// bones, every joint must have the same positions in both.
void CheckBvh(std::string_view input);

}  // namespace fuzz
