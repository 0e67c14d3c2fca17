// Names the types of objects.
// Internal: for export/ and the command line.
#pragma once

#include <string_view>

#include "headless/scene.h"

namespace exporters {

// Returns "Model", "Null", "ChainRoot", "ChainBone" or "ChainEffector".
std::string_view TypeName(headless::ObjectType type);

}  // namespace exporters
