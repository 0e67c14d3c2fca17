#pragma once

#include <string_view>

#include "plugin/contract.h"

namespace fuzz {

// The first bytes choose the command and what the argument list holds, which is well-typed and of
// any content; the rest is the text of the files that it names. Requires the callback's promises: 0
// for the two commands, whatever came of them, and a failure for any other; a sound scene, and a
// log that tells the outcome.
void CheckCallback(plugin::Callback callback, std::string_view input);

}  // namespace fuzz
