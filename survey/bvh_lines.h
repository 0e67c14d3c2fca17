// Reads a motion line by line, and finds out how many values each line has and which.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/bvh_skeleton.h"
#include "survey/number_word.h"
#include "survey/numbers.h"

namespace survey {

// Iterates over the words of a motion, across line ends.
class RowWords {
  public:
    RowWords(const char* at, const char* end) : at_(at), end_(end) {}
    // The next word; empty after the last one.
    std::string_view Next();

  private:
    const char* at_;
    const char* end_;
};

// The kind of a word in a row. Sets `value` to the number if the kind is Number or Comma, and to
// NaN otherwise.
WordKind ReadRowWord(std::string_view word, double& value);

struct BvhLine {
    const char* at = nullptr;  // the line's first word
    std::uint32_t line = 0;    // the line's number in the file, counted from 1
    // Number of values in the line. If the line has one word for each channel, each word counts as
    // one value. In all other lines, a word of several numbers, such as "1-2", counts as several
    // values.
    std::uint32_t values : 28;
    std::uint32_t isPlain : 1;   // whether each word is one number that the plug-in accepts
    std::uint32_t isSplit : 1;   // whether splitting words gives one value for each channel
    std::uint32_t hasGlued : 1;  // whether a word counts as several values
    // Whether the line is text and not a row. Text begins with a word of WordKind::Other without a
    // comma. Such a line still counts as a row if three conditions are met: it has one value for
    // each channel, at least half of the values are numbers, and a row follows.
    std::uint32_t isText : 1;
};

// All values of a motion that have the same oddity.
struct OddValue {
    const char* at = nullptr;  // where the first odd word is; null if there is none
    std::string_view word;     // the first odd word
    std::size_t index = 0;     // index of the first odd word's value in its row
    std::size_t count = 0;     // number of odd values
};

// What the lines of a motion hold.
struct BvhLines {
    std::vector<BvhLine> lines;  // without blank lines
    // The values of the lines that have as many values as there are channels. A word that is not a
    // finite number gives NaN. `notFinite` and `glued` are about the same lines.
    Numbers values;
    OddValue notFinite;  // words that are not finite numbers
    OddValue glued;      // words of several numbers, such as "1-2", that are split
    // `commas` and `mixed` are about all lines that do not begin like text.
    OddValue commas;  // decimal commas
    // Commas that may not be decimal commas, because their line also has points or their word is
    // not a number.
    OddValue mixed;
    // True if at least three lines have another number of values than there are channels, all of
    // these lines have one value too many, and their first value rises by a constant.
    bool hasCounter = false;
    bool hasOddWhite = false;  // whether white space occurs that is no separator for the plug-in
    BvhSpot end;               // the next HIERARCHY or the end of the text
};

// Reads from `from` up to a line that begins with HIERARCHY, or to `textEnd`. `channels` is the
// number of values that each row should have.
BvhLines ReadLines(BvhSpot from, const char* textEnd, std::size_t channels);

}  // namespace survey
