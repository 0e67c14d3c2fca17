// Reads a motion line by line: how many values each line has, and which.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/number_word.h"

namespace survey {

// Iterates over the words of a motion, across line ends.
class RowWords {
  public:
    RowWords(const char* at, const char* end) : at_(at), end_(end) {}
    // The next word; empty at the end.
    std::string_view Next();

  private:
    const char* at_;
    const char* end_;
};

// The kind of a row's word. `value` is set for a Number and a Comma, and is NaN otherwise.
WordKind ReadRowWord(std::string_view word, double& value);

struct BvhLine {
    const char* at = nullptr;  // the line's first word
    std::uint32_t line = 0;    // its number in the file, from 1
    // Number of values. A word of several numbers without blanks counts as that many, unless the
    // line has as many words as there are channels.
    std::uint32_t values : 28;
    std::uint32_t isPlain : 1;   // the plug-in reads every word as the number that it is
    std::uint32_t isSplit : 1;   // such words are split, which gives one value for each channel
    std::uint32_t hasGlued : 1;  // such words are counted as several values
    std::uint32_t isText : 1;    // begins with a word that is no number of any kind
};

// Values with the same oddity: their count, and the first of them.
struct OddValue {
    const char* at = nullptr;  // the first such word; null if there is none
    std::string_view word;     // likewise
    std::size_t index = 0;     // of that word's value in its row
    std::size_t count = 0;
};

// What the lines of a motion hold.
struct BvhLines {
    std::vector<BvhLine> lines;  // without blank lines
    // The values of the lines that have as many values as there are channels; NaN for words that
    // are not numbers or not finite.
    std::vector<double> values;
    OddValue notFinite;  // in these lines: words that are not numbers or not finite
    OddValue glued;      // in these lines: words of several numbers without blanks, which are split
    OddValue commas;     // in all lines but those of text: decimal commas
    // In all lines but those of text: commas that may not be decimal commas, because their line
    // also has points or their word is no number.
    OddValue mixed;
    // At least three lines have another number of values than there are channels; all of them have
    // one too many, and their first value rises by a constant.
    bool hasCounter = false;
    bool hasOddWhite = false;  // white space that the plug-in takes for a part of words
    BvhSpot end;               // the next HIERARCHY or the end of the text
};

// Reads from `from` up to a line that begins with HIERARCHY, or to `textEnd`.
BvhLines ReadLines(BvhSpot from, const char* textEnd, std::size_t channels);

}  // namespace survey
