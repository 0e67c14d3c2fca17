// Provides text::to_chars for a double. It is std::to_chars or, if an older standard library (that
// of emscripten 3.1.6) has none for a double, a stand-in with the same results.
#pragma once

#include <version>

#ifdef __cpp_lib_to_chars
#include <charconv>

namespace text {
using std::to_chars;
}
#else
#include "text/to_chars_stand_in.h"

namespace text {
using stand_ins::to_chars;
}
#endif
