// The two import commands. Each reads its arguments from g_UserInput, runs one import, logs the
// outcome and, on success, sets the references to the model, its base pose and its motion.
#pragma once

#include <cstdint>

#include "host/ref.h"
#include "host/status.h"

namespace plugin {

// The status of a command that was given no file name.
inline constexpr std::int32_t kNoFileName = -1;

}  // namespace plugin

Zelk::CStatus ImportBiovision(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
// Without a motion file it sets only `model`. If the motion fails, the skeleton stays in the scene,
// and no reference is set.
Zelk::CStatus ImportAcclaim(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
