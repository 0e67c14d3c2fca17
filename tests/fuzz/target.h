// The functions that a fuzzing engine calls, made from the description of one check.
#pragma once

#include <cstddef>
#include <string_view>

#include "tests/fuzz/grammar_mutator.h"

namespace fuzz {

struct Target {
    void (*check)(std::string_view input);
    std::size_t head;  // bytes of options before the text
    Grammar (*grammar)(std::string_view input);
};
// Each fuzzer defines this.
extern const Target kTarget;

}  // namespace fuzz
