// Writes ASF skeletons in a form that every reader takes.
#pragma once

#include <string>

#include "survey/acclaim_skeleton.h"
#include "survey/marked_text.h"
#include "survey/survey.h"

namespace survey {

// A number as it was written, or, where it is worked out, with 12 decimals.
void AppendNumber(std::string& out, const AsfNumber& number);

// Parents before children; axes in the order XYZ; without the dofs that are left out.
MendedText WriteAsf(const AsfSkeleton& skeleton, const SourceText& source);

}  // namespace survey
