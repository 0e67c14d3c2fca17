#include "survey/bvh_words.h"

#include <algorithm>

#include "survey/codes.h"
#include "textio/ascii.h"

namespace survey {
namespace {

bool IsSeparator(char c) {
    return IsWhite(c) || c == '\0';
}

bool IsBrace(char c) {
    return c == '{' || c == '}';
}

}  // namespace

BvhWords::BvhWords(std::string_view text, FindingList& findings)
    : text_(text), findings_(findings), at_(text.data()) {
    Advance();
}

BvhWord BvhWords::Next() {
    const BvhWord word = next_;
    Advance();
    return word;
}

void BvhWords::MoveTo(BvhSpot spot) {
    at_ = spot.at;
    line_ = spot.line;
    beginsLine_ = at_ == text_.data() || IsLineEnd(at_[-1]);
    afterWord_ = false;
    Advance();
}

void BvhWords::SkipWhite() {
    for (; at_ < End() && IsSeparator(*at_); ++at_) {
        if (!IsLineEnd(*at_)) continue;
        if (*at_ == '\r' && at_ + 1 < End() && at_[1] == '\n') ++at_;
        ++line_;
        beginsLine_ = true;
    }
}

bool BvhWords::SkipComment() {
    if (!beginsLine_ || at_ == End()) return false;
    const bool isComment = *at_ == '#' || (*at_ == '/' && at_ + 1 < End() && at_[1] == '/');
    if (!isComment) return false;
    if (!findings_.AddAgain(codes::kHierarchyWord, Severity::Note))
        findings_.Add({codes::kHierarchyWord, Severity::Note, at_,
                       "a line that begins with # or // is passed over", "", true});
    else if (Finding* known = findings_.Find(codes::kHierarchyWord))
        known->mended = true;
    at_ = LineEnd(at_);
    return true;
}

const char* BvhWords::LineEnd(const char* at) const {
    return std::find_if(at, End(), IsLineEnd);
}

void BvhWords::Advance() {
    const char* const before = at_;
    do
        SkipWhite();
    while (SkipComment());
    const char* const first = at_;
    if (at_ < End() && IsBrace(*at_))
        ++at_;
    else
        at_ = std::find_if(at_, End(), [](char c) { return IsSeparator(c) || IsBrace(c); });
    next_ = {std::string_view(first, static_cast<std::size_t>(at_ - first)), line_, beginsLine_,
             first == before && afterWord_ && at_ != first};
    beginsLine_ = false;
    afterWord_ = true;
}

// Returns where the name that begins at `first` ends: at the end of the line, or before the "{"
// that opens the joint's body. A "{" without white space before it belongs to the name if two
// conditions are met. First, the word that contains it is the last word of its line. Second, the
// next word begins with "{", which opens the body.
const char* BvhWords::NameEnd(const char* first) const {
    const char* const brace =
        std::find_if(first, End(), [](char c) { return IsLineEnd(c) || c == '{'; });
    if (brace == End() || *brace != '{' || brace == first || IsSeparator(brace[-1])) return brace;
    const char* const wordEnd = std::find_if(brace, End(), IsSeparator);
    const char* const lineEnd =
        std::find_if(wordEnd, End(), [](char c) { return !IsSeparator(c) || IsLineEnd(c); });
    if (lineEnd == End() || !IsLineEnd(*lineEnd)) return brace;
    const char* const next = std::find_if(lineEnd, End(), [](char c) { return !IsSeparator(c); });
    return next != End() && *next == '{' ? lineEnd : brace;
}

std::string_view BvhWords::RestOfLine() {
    const char* const first = next_.text.data();
    const char* last = NameEnd(first);
    at_ = last;
    afterWord_ = last > first && !IsSeparator(last[-1]);
    Advance();
    while (last > first && IsSeparator(last[-1]))
        --last;
    return {first, static_cast<std::size_t>(last - first)};
}

bool EqualsWord(std::string_view word, std::string_view keyword) {
    return word.size() == keyword.size() && BeginsWithWord(word, keyword);
}

bool BeginsWithWord(std::string_view word, std::string_view keyword) {
    return word.size() >= keyword.size() &&
           std::equal(keyword.begin(), keyword.end(), word.begin(),
                      [](char a, char b) { return textio::ToLower(a) == textio::ToLower(b); });
}

}  // namespace survey
