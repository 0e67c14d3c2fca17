// Splits Acclaim texts into words. White space, parentheses and commas separate words. A word that
// begins with "#" begins a comment, which goes to the end of the line and is skipped.
#pragma once

#include <string>
#include <string_view>

#include "survey/source_text.h"

namespace survey {

struct AsfWord {
    std::string_view text;    // empty after the last word
    bool startsLine = false;  // whether it is the first word of its line

    bool IsEnd() const { return text.empty(); }
    bool IsKeyword() const { return text.starts_with(':'); }
    // Whether the word equals `lower` if the case of ASCII letters is ignored. `lower` must be in
    // lower case.
    bool Is(std::string_view lower) const;
};

// Whether `word` equals `lower` if the case of ASCII letters is ignored. `lower` must be in lower
// case.
bool EqualsLower(std::string_view word, std::string_view lower);
std::string ToLowerText(std::string_view text);

// A NUL byte also separates words here. The plug-in would take it for the end of the text.
constexpr bool IsAsfSeparator(char c) {
    return IsWhite(c) || c == '(' || c == ')' || c == ',' || c == '\0';
}

// Reads the words as authors mean them: a line ends at a carriage return or a line feed.
class AsfWords {
  public:
    explicit AsfWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {
        Advance(true);
    }

    const AsfWord& Peek() const { return next_; }
    AsfWord Next();
    // Moves to the first word of the next line that has words.
    void SkipLine();
    // Moves to the first word at or after `at`. If `startsLine`, the word counts as the first of
    // its line even if there is no line end between `at` and the word.
    void MoveTo(const char* at, bool startsLine);

  private:
    void Advance(bool startsLine);

    const char* at_;  // the end of `next_` in the text
    const char* end_;
    AsfWord next_;
};

// Reads the words as the plug-in does: only line feeds end lines, and vertical tabs and form feeds
// are parts of words. The text must not contain a NUL.
class PlugInWords {
  public:
    explicit PlugInWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    // The next word, which may be in a comment; empty after the last one.
    std::string_view NextRaw();
    // The next word that is not in a comment; empty after the last one.
    std::string_view Next();
    std::string_view Peek() const { return PlugInWords(*this).Next(); }
    // Both functions read a number as the plug-in does. If the plug-in refuses the next word, they
    // return false and do not move.
    bool NextNumber(double& value);
    bool NextWholeNumber(int& value);
    // Moves to the next line. If this is the last line, returns false and does not move.
    bool SkipLine();
    // Whether no further word follows on this line.
    bool AtLineEnd() const;

    const char* At() const { return at_; }
    void MoveTo(const char* at) { at_ = at; }

  private:
    const char* at_;
    const char* end_;
};

}  // namespace survey
