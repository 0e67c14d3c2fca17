#include "survey/source_text.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "survey/encoding.h"
#include "text/utf8.h"

namespace survey {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Whether the byte is left out at the end of a text. 0x1A is Ctrl-Z.
bool IsTrailing(char c) {
    return IsWhite(c) || c == '\0' || c == '\x1A';
}

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

// Whether the text has a byte above 127. Most texts have none and are searched to their end, so 64
// bytes are examined at a time.
bool HasHighByte(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    constexpr std::size_t kAtOnce = 64;
    std::size_t at = 0;
    for (; at + kAtOnce <= text.size(); at += kAtOnce) {
        std::uint64_t words[kAtOnce / sizeof(std::uint64_t)];
        std::memcpy(words, text.data() + at, kAtOnce);
        std::uint64_t all = 0;
        for (const std::uint64_t word : words)
            all |= word;
        if ((all & kHighBits) != 0) return true;
    }
    return std::any_of(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

}  // namespace

SourceText::SourceText(std::string_view bytes, const std::string& encoding) : text_(bytes) {
    if (const auto order = FindUtf16(bytes)) {
        wasUtf16_ = true;
        converted_ = Utf16ToUtf8(bytes, *order);
        text_ = converted_;
    } else if (bytes.starts_with(kUtf8Mark)) {
        hadMark_ = true;
        text_.remove_prefix(kUtf8Mark.size());
    }
    hasHighBytes_ = HasHighByte(text_);
    if (hasHighBytes_ && !encoding.empty() && !text::IsValidUtf8(text_)) {
        wasEncoded_ = true;
        converted_ = ConvertEncoding(text_, encoding);
        text_ = converted_;
        hasHighBytes_ = HasHighByte(text_);
    }
    TrimEnd();
}

void SourceText::TrimEnd() {
    while (!text_.empty() && IsTrailing(text_.back())) {
        const char c = text_.back();
        hadTrailingControls_ |= c != ' ' && c != '\t' && !IsLineEnd(c);
        text_.remove_suffix(1);
    }
}

Position SourceText::PositionOf(const char* at) const {
    Position position{1, 1};
    const char* lineStart = text_.data();
    for (const char* c = text_.data(); c < at; ++c) {
        if (!IsLineEnd(*c)) continue;
        if (*c == '\r' && c + 1 < at && c[1] == '\n') ++c;
        ++position.line;
        lineStart = c + 1;
    }
    const std::string_view before(lineStart, static_cast<std::size_t>(at - lineStart));
    const bool valid = text::IsValidUtf8(before);
    position.column += static_cast<std::size_t>(std::count_if(
        before.begin(), before.end(), [&](char c) { return !valid || !IsContinuation(c); }));
    return position;
}

}  // namespace survey
