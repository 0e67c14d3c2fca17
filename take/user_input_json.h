#pragma once

#include <string>

#include "plugin/user_input.h"
#include "text/api.h"

namespace take {

// Returns the plug-in's record of a command's arguments as a JSON object.
ZKMOCAP_API std::string UserInputJson(const USERINPUT& input);

}  // namespace take
