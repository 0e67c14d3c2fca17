// Reads ASF skeletons as their authors meant them.
#pragma once

#include <string>

#include "survey/acclaim_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

// The skeleton of `findings`' text, whose findings are told. `fileName` is the name where the file
// has an empty one. What cannot be read is told as an error; the skeleton then is of no use.
AsfSkeleton ReadAsf(FindingList& findings, const std::string& fileName);

}  // namespace survey
