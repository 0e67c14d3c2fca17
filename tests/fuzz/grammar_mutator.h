// Changes files the way their grammars are built: whole sections, lines and tokens instead of
// bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

enum class Grammar : std::uint8_t { Bvh, Acclaim };

// One to four changes to `text`: sections (a joint with all that is in it, a bone, a part of a
// file, a frame), lines or tokens are swapped, repeated, dropped or taken from `donor`; numbers
// become extreme ones, words keywords, names each other. The same seed gives the same text
// everywhere; of at most `capacity` bytes.
std::string Mutate(std::string_view text, std::string_view donor, Grammar grammar,
                   std::uint32_t seed, std::size_t capacity);

}  // namespace fuzz
