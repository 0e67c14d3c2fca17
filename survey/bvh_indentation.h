// Finds the parents of joints by indentation if closing braces are missing.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// If joints are still open where the section's motion begins, reports them; they end there. The
// parent by indentation is the nearest earlier joint with less white space before it. If, for every
// joint, that is the parent by braces or one of its ancestors, it becomes the joint's parent;
// otherwise the parents by braces stay.
void CloseOpenBraces(BvhSection& section, FindingList& findings);

}  // namespace survey
