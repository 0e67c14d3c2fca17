// The words of Acclaim texts, between white space, parentheses and commas and without comments,
// which run from a word that begins with "#" to the end of its line.
#pragma once

#include <string>
#include <string_view>

#include "survey/source_text.h"

namespace survey {

struct AsfWord {
    std::string_view text;    // empty after the last word
    bool startsLine = false;  // the first word of its line

    bool IsEnd() const { return text.empty(); }
    bool IsKeyword() const { return text.starts_with(':'); }
    // In any letter case of ASCII; `lower` is in lower case.
    bool Is(std::string_view lower) const;
};

bool EqualsLower(std::string_view word, std::string_view lower);
std::string ToLowerText(std::string_view text);

// A NUL byte would end a text for the plug-in, so it is a part of no word.
constexpr bool IsAsfSeparator(char c) {
    return IsWhite(c) || c == '(' || c == ')' || c == ',' || c == '\0';
}

// As people mean them: every line end ends a line.
class AsfWords {
  public:
    explicit AsfWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {
        Advance(true);
    }

    const AsfWord& Peek() const { return next_; }
    AsfWord Next();
    // To the first word of a later line.
    void SkipLine();
    // To the first word from there on, which is taken as the first of its line where `startsLine`.
    void MoveTo(const char* at, bool startsLine);

  private:
    void Advance(bool startsLine);

    const char* at_;  // after the next word
    const char* end_;
    AsfWord next_;
};

// As the plug-in reads them: only line feeds end a line, and vertical tabs and form feeds are
// characters like others. The text holds no NUL.
class PlugInWords {
  public:
    explicit PlugInWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    // The next word, a comment's too; empty after the last one.
    std::string_view NextRaw();
    // The next word that begins no comment.
    std::string_view Next();
    std::string_view Peek() const { return PlugInWords(*this).Next(); }
    // As the plug-in reads numbers: false, and nothing is read, for what it refuses.
    bool NextNumber(double& value);
    bool NextWholeNumber(int& value);
    // False, without moving, in the last line.
    bool SkipLine();
    // Whether a line ends between here and the next word.
    bool AtLineEnd() const;

    const char* At() const { return at_; }
    void MoveTo(const char* at) { at_ = at; }

  private:
    const char* at_;
    const char* end_;
};

}  // namespace survey
