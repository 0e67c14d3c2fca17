// A file's text as the readers see it: UTF-8 where the file is Unicode, without a byte-order mark
// and without white space, Ctrl-Z and NUL bytes at its end; and where in the file a byte of it is.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace survey {

// Counted from 1.
struct Position {
    std::size_t line = 0;
    std::size_t column = 0;  // in characters; a byte that is no part of UTF-8 is one
};

class SourceText {
  public:
    // `bytes` are looked at in place, stay as they are while this lives, and are followed by a byte
    // that can be read and belongs to no number (a NUL, as in std::string). UTF-16, told by its
    // mark or by its zeros, is converted. Bytes that are no UTF-8 are converted where `encoding`, a
    // name that iconv knows, says from what; without it they stay, for the reader to treat.
    explicit SourceText(std::string_view bytes, const std::string& encoding = {});
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    // Followed by a byte that can be read and belongs to no number.
    std::string_view Text() const { return text_; }

    // Where `at`, a byte of the text or its end, is in the file. Costs a pass over the text before
    // it.
    Position PositionOf(const char* at) const;

    bool HadMark() const { return hadMark_; }        // UTF-8's
    bool WasUtf16() const { return wasUtf16_; }      // with or without a mark
    bool WasEncoded() const { return wasEncoded_; }  // converted from `encoding`
    // Bytes above 127 are in the text; without them nothing about encodings needs to be asked.
    bool HasHighBytes() const { return hasHighBytes_; }
    // What was left out at the end has more than blanks, tabs and line ends, which alone mean
    // nothing to the plug-in.
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
