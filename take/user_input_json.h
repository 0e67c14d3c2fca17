#pragma once

#include <string>

#include "plugin/user_input.h"

namespace take {

// The plug-in's record of its arguments as a JSON object.
std::string UserInputJson(const USERINPUT& input);

}  // namespace take
