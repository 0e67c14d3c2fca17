#pragma once

#include <string_view>

#include "plugin/contract.h"

namespace fuzz {

// The first bytes choose the command and the arguments, which have the right types and any content.
// The rest is the text of the files that the arguments name. Requires what the callback promises:
// it returns 0 for the two commands, even if they fail, and a failure for any other command; the
// scene is sound, and the log has the outcome.
void CheckCallback(plugin::Callback callback, std::string_view input);

}  // namespace fuzz
