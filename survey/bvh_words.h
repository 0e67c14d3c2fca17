// The words of a BVH's hierarchy and of its motion's header: between white space, NUL bytes count
// as it, and braces, which are words of their own. Lines that begin with "#" or "//" are passed
// over.
#pragma once

#include <string_view>

#include "survey/bvh_skeleton.h"
#include "survey/finding_list.h"

namespace survey {

struct BvhWord {
    std::string_view text;  // empty at the end of the text
    std::uint32_t line = 0;
    bool beginsLine = false;
    bool glued = false;  // no white space parts it from the word before

    bool IsEnd() const { return text.empty(); }
    BvhSpot Spot() const { return {text.data(), line}; }
};

class BvhWords {
  public:
    // Tells of comments. Text and findings stay as long as this.
    BvhWords(std::string_view text, FindingList& findings);

    const BvhWord& Peek() const { return next_; }
    BvhWord Next();
    // The rest of the line that the next word is on, up to its end or to a brace that opens a body;
    // without white space around it. The next word is the one after it.
    std::string_view RestOfLine();
    // On from a spot after the next word.
    void Continue(BvhSpot spot);

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

bool EqualsWord(std::string_view word, std::string_view keyword);      // in any letter case
bool BeginsWithWord(std::string_view word, std::string_view keyword);  // likewise

}  // namespace survey
