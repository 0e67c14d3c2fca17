// Changes files according to their grammars: whole sections, lines and tokens instead of bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

enum class Grammar : std::uint8_t { Bvh, Acclaim };

// Makes one to four changes to `text`. Sections (a joint with everything in it, a bone, a part of a
// file, a frame), lines or tokens are swapped, repeated, dropped or copied from `donor`; a number
// is replaced by an extreme one, a token by a keyword or by another token. The result has at most
// `capacity` bytes. The same seed gives the same result on every machine.
std::string Mutate(std::string_view text, std::string_view donor, Grammar grammar,
                   std::uint32_t seed, std::size_t capacity);

}  // namespace fuzz
