// Prepares a file's text for the readers. UTF-16 is converted to UTF-8. The byte-order mark is left
// out, and so are white space, Ctrl-Z and NUL bytes at the end of the text. Also finds the line and
// column of a byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace survey {

// Lines and columns count from 1.
struct Position {
    std::size_t line = 0;
    // Counts characters. If the part of the line before the position is not UTF-8, counts bytes.
    std::size_t column = 0;
};

class SourceText {
  public:
    // `bytes` are not copied, so they must outlive this object. In memory they must be followed by
    // a readable byte that is not part of a number (a NUL, as in std::string). UTF-16 is recognised
    // as FindUtf16 says (encoding.h). Any other text that is not UTF-8 is converted from
    // `encoding`, which must be a name that iconv knows. If `encoding` is empty, such a text is not
    // converted.
    explicit SourceText(std::string_view bytes, const std::string& encoding = {});
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    // The prepared text. In memory it is followed by a readable byte that is not part of a number.
    std::string_view Text() const { return text_; }

    // Finds the line and column of `at`, which must point into the text or to its end. This is
    // slow, because all of the text before `at` is read.
    Position PositionOf(const char* at) const;

    // Whether the file began with the byte-order mark of UTF-8.
    bool HadMark() const { return hadMark_; }
    // Whether the file was UTF-16, with or without a byte-order mark.
    bool WasUtf16() const { return wasUtf16_; }
    // Whether the text was converted from `encoding`.
    bool WasEncoded() const { return wasEncoded_; }
    // Whether the text has bytes above 127. A text without them is valid UTF-8. The first call
    // searches the text, on several threads if it is long; the others remember the result.
    bool HasHighBytes() const;
    // Whether any other bytes than blanks, tabs and line ends were left out at the end of the text.
    // At the end of a file, the plug-in ignores blanks, tabs and line ends, but not other bytes.
    bool HadTrailingControls() const { return hadTrailingControls_; }

  private:
    void TrimEnd();

    std::string converted_;
    std::string_view text_;
    bool hadMark_ = false;
    bool wasUtf16_ = false;
    bool wasEncoded_ = false;
    mutable std::optional<bool> hasHighBytes_;  // nullopt: not known yet
    bool hadTrailingControls_ = false;
};

// Whether the byte ends a line. A line ends with a line feed, with a carriage return, or with a
// carriage return and a line feed.
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
