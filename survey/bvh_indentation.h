// Finds the parents of joints by indentation if closing braces are missing.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Reports the joints whose braces are still open where the section's motion begins. Then parents
// are looked for by indentation: the parent of a joint is the nearest earlier joint that is
// indented less and is not an end site. The parents by indentation are used only if all of them fit
// the braces that the file has. To fit, a parent must be the parent by braces or an ancestor of
// that parent. If they do not fit, all joints keep their parents by braces, and the open joints end
// at the motion.
void CloseOpenBraces(BvhSection& section, FindingList& findings);

}  // namespace survey
