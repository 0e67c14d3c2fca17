// The host commands that the plug-in runs by name.
#pragma once

#include "host/arrays.h"
#include "host/status.h"
#include "host/string.h"

namespace headless {

// Runs the command and records it in the session, whether it succeeds or fails. An unknown name
// fails with kFail. Empty or wrong arguments fail with kInvalidArgument. A command that fails in
// one of these two ways leaves the scene unchanged. Throws std::bad_alloc when memory runs out.
Zelk::CStatus RunCommand(const Zelk::CString& name, const Zelk::CValueArray& arguments);

}  // namespace headless
