// Splits Acclaim texts into words. White space, parentheses and commas separate words. A word that
// begins with "#" begins a comment, which goes to the end of the line and is skipped.
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
    // Compares, ignoring the case of ASCII letters. `lower` is in lower case.
    bool Is(std::string_view lower) const;
};

// Whether `word` is `lower`, which is in lower case, if the case of ASCII letters is ignored.
bool EqualsLower(std::string_view word, std::string_view lower);
std::string ToLowerText(std::string_view text);

// NUL bytes separate words too, since they would end the text for the plug-in.
constexpr bool IsAsfSeparator(char c) {
    return IsWhite(c) || c == '(' || c == ')' || c == ',' || c == '\0';
}

// The words as authors mean them: carriage returns and line feeds both end lines.
class AsfWords {
  public:
    explicit AsfWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {
        Advance(true);
    }

    const AsfWord& Peek() const { return next_; }
    AsfWord Next();
    // Moves to the first word of the next line that has words.
    void SkipLine();
    // Moves to the first word from `at` on. `startsLine` says that it counts as the first of its
    // line even if no line end comes before it.
    void MoveTo(const char* at, bool startsLine);

  private:
    void Advance(bool startsLine);

    const char* at_;  // after the next word
    const char* end_;
    AsfWord next_;
};

// The words as the plug-in reads them: only line feeds end lines, and vertical tabs and form feeds
// are parts of words. The text must not hold a NUL.
class PlugInWords {
  public:
    explicit PlugInWords(std::string_view text) : at_(text.data()), end_(at_ + text.size()) {}

    // The next word, which may be in a comment; empty after the last one.
    std::string_view NextRaw();
    // The next word that is not in a comment; empty after the last one.
    std::string_view Next();
    std::string_view Peek() const { return PlugInWords(*this).Next(); }
    // Read a number as the plug-in does. Return false, without moving, for a word that it refuses.
    bool NextNumber(double& value);
    bool NextWholeNumber(int& value);
    // Moves to the next line. Returns false, without moving, in the last line.
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
