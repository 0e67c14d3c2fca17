// Whether the plug-in, which knows nothing but words between tab, line end and space, reads a
// section as the tolerant readers did.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"

namespace survey {

// Of the section from its HIERARCHY up to its rows or, without a motion, the end of the text.
bool IsReadPlainly(const BvhSection& section, std::string_view text);

}  // namespace survey
