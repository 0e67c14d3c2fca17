#pragma once

#include <string_view>

namespace fuzz {

// The first two bytes hold the options, the rest is an ASF file and, behind the first "~", an AMC
// file. Imports them as the plug-in would and requires a sound scene, a known outcome, and, where
// the pair can be imported both as nulls and as bones, that both put every joint at the same place.
void CheckAcclaim(std::string_view input);

}  // namespace fuzz
