// Parents by indentation, where braces are missing.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// For a section whose motion begins with joints still open, tells so. A joint's parent by
// indentation is the nearest earlier joint with less white space before it; where that is, for
// every joint, its parent by braces or one above that, it becomes its parent.
void CloseOpenBraces(BvhSection& section, FindingList& findings);

}  // namespace survey
