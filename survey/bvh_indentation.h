// Finds the parents of joints by indentation if closing braces are missing.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// If the braces of joints are still open where the section's motion begins, reports these joints.
// They end there. A joint's parent by indentation is the nearest earlier joint that is indented
// less. If this parent is, for every joint, the parent by braces or one of its ancestors, all
// joints get their parents by indentation. Otherwise they keep their parents by braces.
void CloseOpenBraces(BvhSection& section, FindingList& findings);

}  // namespace survey
