// Splits a BVH hierarchy and a motion's header into words. White space and NUL bytes separate
// words, and each brace is a word. Lines that begin with "#" or "//" are skipped.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

struct BvhWord {
    std::string_view text;    // empty at the end of the text
    std::uint32_t line = 0;   // counted from 1
    bool beginsLine = false;  // whether it is the first word of its line
    bool glued = false;       // whether there is no white space between it and the word before

    bool IsEnd() const { return text.empty(); }
    BvhSpot Spot() const { return {text.data(), line}; }
};

class BvhWords {
  public:
    // Skipped comments are added to `findings`. `text` and `findings` must outlive this object.
    BvhWords(std::string_view text, FindingList& findings);

    const BvhWord& Peek() const { return next_; }
    BvhWord Next();
    // Reads from the next word to the end of its line, or up to a brace that opens a joint's body.
    // Returns what was read without white space at its end.
    std::string_view RestOfLine();
    // Continues reading at `spot`.
    void MoveTo(BvhSpot spot);

    const char* End() const { return text_.data() + text_.size(); }

  private:
    void Advance();
    void SkipWhite();
    bool SkipComment();
    const char* LineEnd(const char* at) const;
    const char* NameEnd(const char* first) const;

    std::string_view text_;
    FindingList& findings_;
    const char* at_;
    std::uint32_t line_ = 1;
    bool beginsLine_ = true;  // whether no word has been read on the current line
    bool afterWord_ = false;  // whether a word ends at `at_`
    BvhWord next_;
};

// Both functions ignore the case of ASCII letters.
bool EqualsWord(std::string_view word, std::string_view keyword);
bool BeginsWithWord(std::string_view word, std::string_view keyword);

}  // namespace survey
