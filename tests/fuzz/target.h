// A fuzzer for files: what an engine asks for, from what one check says about itself.
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
// Each fuzzer defines its own.
extern const Target kTarget;

}  // namespace fuzz
