// Reads the header of a BVH motion: "Frames:" and "Frame Time:" with their numbers. Tolerates the
// deviations from the format that occur in files.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/bvh_words.h"
#include "survey/finding_list.h"

namespace survey {

// Reads from the word after MOTION up to the first row. Fills in `section.motion` and reports what
// is odd about the header. `rateStated` says that the user states the rate. In that case, a missing
// or odd frame time is not reported.
void ReadMotionHeader(BvhWords& words, BvhSection& section, bool rateStated, FindingList& findings);

}  // namespace survey
