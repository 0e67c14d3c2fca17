#pragma once

#include <string_view>

namespace fuzz {

// The first byte holds the options, the rest is a BVH file. Imports it as the plug-in would and
// requires a sound scene, a known outcome, and, where the file can be imported both as nulls and as
// bones, that both put every joint at the same place in every frame.
void CheckBvh(std::string_view input);

}  // namespace fuzz
