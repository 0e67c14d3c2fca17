// The host commands that the plug-in runs by name.
#pragma once

#include "host/arrays.h"
#include "host/status.h"
#include "host/string.h"

namespace headless {

// Runs the command and records it in the session, whether it succeeds or fails. An unknown name
// fails with kFail, empty or wrong arguments with kInvalidArgument; the scene is then unchanged.
// Throws std::bad_alloc when memory runs out.
Zelk::CStatus RunCommand(const Zelk::CString& name, const Zelk::CValueArray& arguments);

}  // namespace headless
