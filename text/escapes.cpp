#include "text/escapes.h"

#include <cstdint>
#include <fmt/format.h>

#include "text/wide_text.h"

namespace text {
namespace {

std::uint32_t CodeOf(wchar_t character) {
    // A negative value becomes a large code, which is no character.
    // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
    return static_cast<std::uint32_t>(character);
}

std::wstring Escaped(wchar_t character) {
    switch (character) {
        case L'\n':
            return L"\\n";
        case L'\r':
            return L"\\r";
        case L'\t':
            return L"\\t";
        default:
            break;
    }
    const std::uint32_t code = CodeOf(character);
    const std::string digits =
        code > 0xFF ? fmt::format("\\u{:04x}", code) : fmt::format("\\x{:02x}", code);
    return {digits.begin(), digits.end()};
}

}  // namespace

bool IsControl(wchar_t character) {
    const std::uint32_t code = CodeOf(character);
    const auto isIn = [code](std::uint32_t first, std::uint32_t last) {
        return code >= first && code <= last;
    };
    // U+2028 and U+2029 end a line. U+061C and the last three ranges change the direction in which
    // the text after them is read.
    return code < 0x20 || isIn(0x7F, 0x9F) || isIn(0x2028, 0x2029) || code == 0x061C ||
           isIn(0x200E, 0x200F) || isIn(0x202A, 0x202E) || isIn(0x2066, 0x2069);
}

std::wstring EscapeControls(std::wstring_view text, bool keepLineBreaks) {
    std::wstring readable;
    readable.reserve(text.size());
    for (const wchar_t character : text) {
        if (IsControl(character) && !(keepLineBreaks && character == L'\n'))
            readable += Escaped(character);
        else
            readable += character;
    }
    return readable;
}

std::string EscapeControls(std::string_view bytes, bool keepLineBreaks) {
    return EncodeUtf8(EscapeControls(DecodeUtf8(bytes), keepLineBreaks));
}

}  // namespace text
