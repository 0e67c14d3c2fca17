// Writes AMC motions in a form that every reader takes.
#pragma once

#include "survey/amc_reader.h"

namespace survey {

// One line a bone in the first frame's order, angles in the skeleton's unit. Reads the text anew.
MendedText WriteAmc(const AsfSkeleton& skeleton, Purpose purpose, const SourceText& source,
                    AmcMotion& motion);

}  // namespace survey
