// Suggests a known word to a user who wrote an unknown one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cli {

// Returns the text with its ASCII letters in lower case.
std::string LowerCase(std::string_view text);

// Returns the known word that is nearest to `word`: the one with the fewest letters that have to be
// inserted, deleted, replaced or swapped with their neighbour. Letter case does not count. Returns
// an empty text if that is more than one letter of a short word, or more than two or three of a
// long one. If several words are nearest, the first of them is returned.
std::string NearestWord(std::string_view word, const std::vector<std::string>& known);

// Returns "; did you mean 'NEAREST'?", or an empty text if no known word is near.
std::string Suggestion(std::string_view word, const std::vector<std::string>& known);

// Returns the words as one text: "auto, cmu or none". `last` comes before the last word.
std::string ListOf(const std::vector<std::string>& words, std::string_view last = "or");

}  // namespace cli
