#include "survey/source_text.h"

#include <algorithm>

#include "survey/encoding.h"
#include "survey/high_bytes.h"
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
    if (!encoding.empty() && HasHighBytes() && !text::IsValidUtf8(text_)) {
        wasEncoded_ = true;
        converted_ = ConvertEncoding(text_, encoding);
        text_ = converted_;
        hasHighBytes_.reset();
    }
    TrimEnd();
}

bool SourceText::HasHighBytes() const {
    if (!hasHighBytes_) hasHighBytes_ = HasHighByteInParts(text_, HighByteThreads(text_.size()));
    return *hasHighBytes_;
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
