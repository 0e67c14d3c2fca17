// Checks whether the plug-in reads an ASF text as the tolerant reader did.
#pragma once

#include <string_view>

#include "survey/acclaim_skeleton.h"

namespace survey {

// Whether the plug-in reads `skeleton` from `text`, with the bones in the same order and the same
// units. ReadAsf must have read `skeleton` from that text, and its axes must be in the file's
// orders.
bool PlugInReads(std::string_view text, const AsfSkeleton& skeleton);

}  // namespace survey
