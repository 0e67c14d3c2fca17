// Provides text::to_chars for a double. If the standard library has std::to_chars for a double,
// this is std::to_chars. The library of emscripten 3.1.6 does not have it. A stand-in with the same
// results is used there.
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
