// Checks whether the plug-in reads a section as the tolerant readers of this folder did. The
// plug-in only knows words that are separated by tabs, line ends and spaces.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"

namespace survey {

// Compares the section from its HIERARCHY up to its rows or, without a motion, up to the end of
// `text`, which is the whole file.
bool IsReadPlainly(const BvhSection& section, std::string_view text);

}  // namespace survey
