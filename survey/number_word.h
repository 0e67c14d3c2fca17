// Reads words of a file as numbers, independently of the locale.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace survey {

enum class WordKind : std::uint8_t {
    Number,     // a decimal: optional sign, digits with at most one point, optional exponent
    Comma,      // the same with a comma instead of the point
    Glued,      // several decimals without a blank between them; all but the first have a sign
                // ("0-7.5")
    NotFinite,  // "nan", "inf", "infinity", "1.#IND" and the like, or a decimal too large for a
                // double
    Other,
};

// The kind of the whole word. `value` is set for a Number or a Comma, and then it is finite;
// otherwise it is left as it is. The byte after the word must be readable and no part of a number.
WordKind ClassifyWord(std::string_view word, double& value);

// The parts of a Glued word; each is a Number or, if it is too large for a double, NotFinite.
std::vector<std::string_view> SplitGlued(std::string_view word);

// Whether the plug-in reads the word, a Number of this value, as a number. It refuses a zero that
// begins with neither "0" nor "-0", such as ".0" and "+0".
bool IsPlainWord(std::string_view word, double value);

}  // namespace survey
