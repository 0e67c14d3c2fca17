// Functions that are missing in the standard libraries of clang 14 and emscripten 3.1.6. Callers
// use the names in textio with every compiler. Such a name is the standard function if the standard
// library has it, and our replacement otherwise.
#pragma once

#include <bit>
#include <charconv>
#include <cstddef>
#include <memory>
#include <type_traits>

#ifndef __cpp_lib_to_chars
#include "textio/from_chars_stand_in.h"
#endif

namespace textio {

#ifdef __cpp_lib_to_chars
using std::from_chars;
#else
using stand_ins::from_chars;
#endif

#ifdef __cpp_lib_smart_ptr_for_overwrite
using std::make_unique_for_overwrite;
#else
template <class Array>
requires std::is_unbounded_array_v<Array> std::unique_ptr<Array> make_unique_for_overwrite(
    std::size_t count) {
    return std::unique_ptr<Array>(new std::remove_extent_t<Array>[count]);
}
#endif

#ifdef __cpp_lib_bit_cast
using std::bit_cast;
#else
template <class To, class From>
requires(sizeof(To) == sizeof(From) && std::is_trivially_copyable_v<To> &&
         std::is_trivially_copyable_v<From>) constexpr To bit_cast(const From& from) noexcept {
    return __builtin_bit_cast(To, from);
}
#endif

}  // namespace textio
