#pragma once

#include <string_view>

#include "headless/scene.h"

namespace app {

// "Model", "Null", "ChainRoot", "ChainBone" or "ChainEffector".
std::string_view TypeName(headless::ObjectType type);

}  // namespace app
