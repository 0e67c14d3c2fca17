// What the plug-in reads from an ASF text.
#pragma once

#include <string_view>

#include "survey/acclaim_skeleton.h"

namespace survey {

// Whether it reads `skeleton`, which was read from that text, with the bones in its order and
// angles and lengths as they are meant. Axis orders are compared as words.
bool PlugInReads(std::string_view text, const AsfSkeleton& skeleton);

}  // namespace survey
