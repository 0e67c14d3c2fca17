// Provides text::to_chars for a double. It is std::to_chars if the standard library has that for a
// double. The library of emscripten 3.1.6 does not; a stand-in with the same results is used there.
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
