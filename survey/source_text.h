// A file's text as the readers see it: UTF-8 if the file is Unicode, without a byte-order mark, and
// without white space, Ctrl-Z and NUL bytes at its end. Also finds the line and column of a byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace survey {

// Both count from 1.
struct Position {
    std::size_t line = 0;
    std::size_t column = 0;  // in characters, or in bytes if the line up to there is not UTF-8
};

class SourceText {
  public:
    // `bytes` are not copied: they must outlive this object, and be followed by a readable byte
    // that is no part of a number (a NUL, as in std::string). UTF-16 is recognised by its mark or
    // its zero bytes, and converted. Any other text that is not UTF-8 is converted from `encoding`,
    // a name that iconv knows; if that is empty, its bytes stay as they are.
    explicit SourceText(std::string_view bytes, const std::string& encoding = {});
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    // Followed by a readable byte that is no part of a number.
    std::string_view Text() const { return text_; }

    // The line and column of `at`, which points into the text or to its end. Reads all of the text
    // before it.
    Position PositionOf(const char* at) const;

    bool HadMark() const { return hadMark_; }        // the byte-order mark of UTF-8
    bool WasUtf16() const { return wasUtf16_; }      // with or without a byte-order mark
    bool WasEncoded() const { return wasEncoded_; }  // converted from `encoding`
    // Whether bytes above 127 are in the text. A text without them is valid UTF-8.
    bool HasHighBytes() const { return hasHighBytes_; }
    // Whether the end that was left out holds bytes other than blanks, tabs and line ends. The
    // plug-in ignores only these three.
    bool HadTrailingControls() const { return hadTrailingControls_; }

  private:
    void TrimEnd();

    std::string converted_;
    std::string_view text_;
    bool hadMark_ = false;
    bool wasUtf16_ = false;
    bool wasEncoded_ = false;
    bool hasHighBytes_ = false;
    bool hadTrailingControls_ = false;
};

// A line ends with a line feed, a carriage return, or both.
constexpr bool IsLineEnd(char c) {
    return c == '\n' || c == '\r';
}
constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}
constexpr bool IsWhite(char c) {
    return IsBlank(c) || IsLineEnd(c);
}

}  // namespace survey
