// Prepares names of the scene for messages.
// Internal to export/.
#pragma once

#include <string>

#include "host/string.h"

namespace exporters {

// The name as UTF-8. Control characters are replaced by escapes such as "\n", so that a message
// stays on one line.
std::string ReadableName(const Zelk::CString& name);

}  // namespace exporters
