// A motion line by line: the values of each, and how many they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/number_word.h"

namespace survey {

// The words of a motion, from a spot on, across lines.
class RowWords {
  public:
    RowWords(const char* at, const char* end) : at_(at), end_(end) {}
    // Empty at the end.
    std::string_view Next();

  private:
    const char* at_;
    const char* end_;
};

// What a word of a row is. `value` is set for a Number and a Comma, and is NaN otherwise.
WordKind ReadRowWord(std::string_view word, double& value);

struct BvhLine {
    const char* at = nullptr;  // of its first word
    std::uint32_t line = 0;
    // Values, those of words that are numbers touching each other counted one by one; for the first
    // line of a further section, and for one that begins with text, 0.
    std::uint32_t values : 28;
    std::uint32_t isPlain : 1;
    std::uint32_t isSplit : 1;   // words are parted into numbers
    std::uint32_t hasGlued : 1;  // has words that are numbers touching each other
    std::uint32_t isText : 1;    // begins with a word that is no number of any kind
};

// Values of text that is no number of any kind, or that is not finite.
struct OddValue {
    const char* at = nullptr;  // of the first such word; null: none
    std::string_view word;
    std::size_t index = 0;  // in its row
    std::size_t count = 0;
};

// What the lines of a motion hold.
struct BvhLines {
    std::vector<BvhLine> lines;  // without blank ones
    std::vector<double> values;  // of the lines with as many values as there are channels
    OddValue notFinite;          // in these lines
    OddValue glued;
    OddValue commas;
    // The first word that is a decimal comma's rival: a comma in a line that has points too, or in
    // a word that is no number.
    OddValue mixed;
    // Of the lines with another number of values: whether the first column rises by a constant.
    bool hasCounter = false;
    bool hasOddWhite = false;  // words are parted by what parts none for the plug-in
    BvhSpot end;
};

BvhLines ReadLines(BvhSpot from, const char* textEnd, std::size_t channels);

}  // namespace survey
