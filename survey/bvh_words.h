// Splits a BVH hierarchy and a motion's header into words. White space and NUL bytes separate
// words, and each brace is a word. Lines that begin with "#" or "//" are skipped.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

struct BvhWord {
    std::string_view text;  // empty at the end of the text
    std::uint32_t line = 0;
    bool beginsLine = false;
    bool glued = false;  // there is no white space between it and the word before

    bool IsEnd() const { return text.empty(); }
    BvhSpot Spot() const { return {text.data(), line}; }
};

class BvhWords {
  public:
    // Reports comments. `text` and `findings` must outlive this object.
    BvhWords(std::string_view text, FindingList& findings);

    const BvhWord& Peek() const { return next_; }
    BvhWord Next();
    // Consumes the rest of the line that the next word is on, up to a brace that opens a body, and
    // returns it without white space around it.
    std::string_view RestOfLine();
    // Continues at a later spot of the text.
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
    bool beginsLine_ = true;
    bool afterWord_ = false;
    BvhWord next_;
};

// Both ignore letter case.
bool EqualsWord(std::string_view word, std::string_view keyword);
bool BeginsWithWord(std::string_view word, std::string_view keyword);

}  // namespace survey
