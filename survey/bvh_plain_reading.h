// Checks whether the plug-in reads the same section from a BVH text as the readers of this folder,
// which tolerate deviations from the format. For the plug-in, only tabs, line ends and spaces
// separate words.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"

namespace survey {

// Whether the plug-in reads `section` from `text`, which is the whole file. Looks at the text from
// the section's HIERARCHY up to its rows or, if it has no motion, up to the end of the text.
bool IsReadPlainly(const BvhSection& section, std::string_view text);

}  // namespace survey
