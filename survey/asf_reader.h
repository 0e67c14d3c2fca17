// Reads ASF skeletons as their authors meant them.
#pragma once

#include <string>

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// Reads the skeleton from the text that `findings` is about, and reports what is odd about it.
// `fileName` becomes the skeleton's name if ":name" is empty. If an error is reported, the result
// must not be used.
AsfSkeleton ReadAsf(FindingList& findings, const std::string& fileName);

}  // namespace survey
