// std::to_chars for a double, under one name everywhere: the standard library's own, or, where an
// older one (emscripten 3.1.6's) has none, one that gives the same.
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
