// Reads words of a file as numbers, in the same way in every locale.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace survey {

enum class WordKind : std::uint8_t {
    Number,     // a decimal: optional sign, digits with at most one point, optional exponent
    Comma,      // a Number with a comma instead of the point
    Glued,      // several decimals without a blank between them, such as "0-7.5"; each decimal
                // after the first has a sign
    NotFinite,  // "nan", "inf", "infinity", "1.#IND" and similar words, or a decimal that is too
                // large for a double
    Other,      // any other word
};

// Returns the kind of the whole word. For a Number or a Comma, sets `value`, which is then finite.
// For other kinds, leaves `value` unchanged. The byte after the word must be readable and must not
// be part of a number.
WordKind ClassifyWord(std::string_view word, double& value);

// Splits a Glued word into its decimals. Each is a Number, or NotFinite if it is too large for a
// double. The result is empty if the word does not consist of decimals.
std::vector<std::string_view> SplitGlued(std::string_view word);

// Whether the plug-in accepts the word as a number. The word must be a Number and have this value.
// The plug-in refuses a zero that begins with neither "0" nor "-0", such as ".0" and "+0".
bool IsPlainWord(std::string_view word, double value);

}  // namespace survey
