// The header of a BVH's motion as people write it: "Frames:" and "Frame Time:" with their numbers.
#pragma once

#include "survey/bvh_skeleton.h"
#include "survey/bvh_words.h"
#include "survey/finding_list.h"

namespace survey {

// From the word after MOTION up to the first row. Fills in the section's header and tells what is
// odd about its words; `rateStated` leaves out what is odd about its frame time.
void ReadMotionHeader(BvhWords& words, BvhSection& section, bool rateStated, FindingList& findings);

}  // namespace survey
