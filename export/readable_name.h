// Names in messages.
// Internal to export/.
#pragma once

#include <string>

#include "host/string.h"

namespace exporters {

// UTF-8 in which control characters are written out ("\n"), so that a message is one line.
std::string ReadableName(const Zelk::CString& name);

}  // namespace exporters
