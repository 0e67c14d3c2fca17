// The two import commands. Each function reads its arguments from g_UserInput, runs one import and
// logs the outcome. On success, it sets the references to the model, the base pose and the motion.
#pragma once

#include <cstdint>

#include "host/ref.h"
#include "host/status.h"

namespace plugin {

// The status that a command returns if the file name is empty.
inline constexpr std::int32_t kNoFileName = -1;

}  // namespace plugin

Zelk::CStatus ImportBiovision(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
// If there is no motion file, only `model` is set. If the import of the motion fails, the skeleton
// stays in the scene, but no reference is set.
Zelk::CStatus ImportAcclaim(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
