// Checks whether the plug-in reads the same skeleton from an ASF text as ReadAsf, which tolerates
// deviations from the format.
#pragma once

#include <string_view>

#include "survey/acclaim_skeleton.h"

namespace survey {

// Whether the plug-in reads `skeleton` from `text`, with the bones in the same order and the same
// units. `skeleton` must be what ReadAsf read from that text, and its axes must not have been
// re-expressed since then.
bool PlugInReads(std::string_view text, const AsfSkeleton& skeleton);

}  // namespace survey
