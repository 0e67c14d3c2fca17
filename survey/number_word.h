// Words of a file as numbers, alike in every locale.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace survey {

enum class WordKind : std::uint8_t {
    Number,     // a decimal: sign, digits with at most one point, exponent
    Comma,      // the same with a comma in the point's stead
    Glued,      // decimals that follow each other, each after the first with its sign ("0.0-7.5")
    NotFinite,  // "nan", "inf", "infinity", "1.#IND" and the like, or a decimal beyond a double
    Other,
};

// What the whole word is. `value` is set for a Number, which is finite, and for a Comma likewise.
// The byte after the word must be readable and no part of a number.
WordKind ClassifyWord(std::string_view word, double& value);

// The numbers of a Glued word, each a Number.
std::vector<std::string_view> SplitGlued(std::string_view word);

// Whether the plug-in takes the word for that value: it refuses a zero that begins with neither "0"
// nor "-0", such as ".0" and "+0".
bool IsPlainWord(std::string_view word, double value);

}  // namespace survey
