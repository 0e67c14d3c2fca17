// Writes AMC motions in a form that every reader accepts.
#pragma once

#include <memory>

#include "survey/amc_reader.h"

namespace survey {

// Writes each frame with one line for each bone, in the order of the first frame. Angles are
// written in the skeleton's unit. The frames are read again from `source`, which changes
// `motion.values`.
std::shared_ptr<const MendedText> WriteAmc(const AsfSkeleton& skeleton, Purpose purpose,
                                           const SourceText& source, AmcMotion& motion);

}  // namespace survey
