#pragma once

#include <cstdint>
#include <string_view>

#include "host/variant.h"

namespace fuzz {

using Callback = std::int32_t (*)(const wchar_t* name, const VARIANT* arguments);

// The first bytes choose the command and what the argument list holds, which is well-typed and of
// any content; the rest is the text of the files that it names. Requires the callback's promises: 0
// for the two commands, whatever came of them, and a failure for any other; a sound scene, and a
// log that tells the outcome.
void CheckCallback(Callback callback, std::string_view input);

}  // namespace fuzz
