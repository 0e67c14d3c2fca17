// The two import commands: each takes its arguments from g_UserInput, runs one import, logs the
// outcome and, on success, fills the references to the model, its base pose and its motion.
#pragma once

#include <cstdint>

#include "host/ref.h"
#include "host/status.h"

namespace plugin {

// What a command returns that was given no file's name.
inline constexpr std::int32_t kNoFileName = -1;

}  // namespace plugin

Zelk::CStatus ImportBiovision(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
// Succeeds with the model alone where no motion was asked for; after a failed motion the skeleton
// stays in the scene, and no reference is filled.
Zelk::CStatus ImportAcclaim(Zelk::CRef& model, Zelk::CRef& basePose, Zelk::CRef& motion);
