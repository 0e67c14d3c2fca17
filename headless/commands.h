// The host commands that the plug-in runs by name.
#pragma once

#include "host/arrays.h"
#include "host/status.h"
#include "host/string.h"

namespace headless {

// Runs the command and keeps a record of it, failed or not. Unknown names fail with kFail, empty or
// wrong arguments with kInvalidArgument; neither changes the scene.
Zelk::CStatus RunCommand(const Zelk::CString& name, const Zelk::CValueArray& arguments);

}  // namespace headless
