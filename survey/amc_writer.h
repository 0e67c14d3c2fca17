// Writes AMC motions in a form that every reader accepts.
#pragma once

#include "survey/amc_reader.h"

namespace survey {

// Writes one line for each bone, in the order of the first frame, with angles in the skeleton's
// unit. Reads the frames of `source` again, which changes `motion.values`.
MendedText WriteAmc(const AsfSkeleton& skeleton, Purpose purpose, const SourceText& source,
                    AmcMotion& motion);

}  // namespace survey
