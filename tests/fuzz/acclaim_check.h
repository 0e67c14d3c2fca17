#pragma once

#include <string_view>

namespace fuzz {

// The first two bytes hold the options. The rest is an ASF file and, after the first "~", an AMC
// file. Imports them as the plug-in would, and requires a sound scene and a known status. If the
// pair can be imported both as nulls and as bones, every joint must have the same positions in
// both.
void CheckAcclaim(std::string_view input);

}  // namespace fuzz
