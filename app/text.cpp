#include "app/text.h"

#include <cstddef>
#include <cstdint>
#include <fmt/format.h>
#include <wchar.h>  // NOLINT(modernize-deprecated-headers): wcwidth is POSIX

namespace app {
namespace {

std::uint32_t CodeOf(wchar_t character) {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c): no char, and never negative here.
    return static_cast<std::uint32_t>(character);
}

constexpr wchar_t kEllipsis = L'\x2026';

// The length of the valid UTF-8 sequence at the start of `bytes`, its value in `code`; 0 without
// one.
std::size_t DecodeOne(std::string_view bytes, std::uint32_t& code) {
    const auto at = [&](std::size_t index) { return static_cast<std::uint8_t>(bytes[index]); };
    const std::uint8_t first = at(0);
    if (first < 0x80) {
        code = first;
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length) return 0;
    code = first & (0xFFu >> (length + 1));
    for (std::size_t index = 1; index < length; ++index) {
        if ((at(index) & 0xC0) != 0x80) return 0;
        code = code << 6 | (at(index) & 0x3Fu);
    }
    const bool overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    return overlong || surrogate || code > 0x10FFFF ? 0 : length;
}

void AppendUtf8(std::string& out, std::uint32_t code) {
    const auto put = [&](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | code >> 6);
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | code >> 12);
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | code >> 18);
        put(0x80 | (code >> 12 & 0x3F));
        put(0x80 | (code >> 6 & 0x3F));
        put(0x80 | (code & 0x3F));
    }
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
    const auto code = CodeOf(character);
    const std::string digits =
        code > 0xFF ? fmt::format("\\u{:04x}", code) : fmt::format("\\x{:02x}", code);
    return {digits.begin(), digits.end()};
}

int WidthOf(wchar_t character) {
    const int width = wcwidth(character);
    return width < 0 ? 1 : width;
}

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        std::uint32_t code = 0;
        std::size_t length = DecodeOne(bytes, code);
        if (length == 0) {
            code = 0xDC00u + static_cast<std::uint8_t>(bytes[0]);
            length = 1;
        }
        text += static_cast<wchar_t>(code);
        bytes.remove_prefix(length);
    }
    return text;
}

bool IsControl(wchar_t character) {
    const auto code = CodeOf(character);
    const auto isIn = [code](std::uint32_t first, std::uint32_t last) {
        return code >= first && code <= last;
    };
    // The latter change the direction that what follows is read in.
    return code < 0x20 || isIn(0x7F, 0x9F) || isIn(0x2028, 0x2029) || code == 0x061C ||
           isIn(0x200E, 0x200F) || isIn(0x202A, 0x202E) || isIn(0x2066, 0x2069);
}

bool IsCharacter(wchar_t character) {
    const std::uint32_t code = CodeOf(character);
    return code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
}

std::string EncodeUtf8(std::wstring_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const wchar_t character : text) {
        AppendUtf8(bytes, IsCharacter(character) ? CodeOf(character) : 0xFFFD);
    }
    return bytes;
}

std::string EncodeUtf8(const Zelk::CString& text) {
    return EncodeUtf8(View(text));
}

std::wstring_view View(const Zelk::CString& text) {
    return {text.GetWideString(), text.Length()};
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

int DisplayWidth(std::wstring_view text) {
    int width = 0;
    for (const wchar_t character : text)
        width += WidthOf(character);
    return width;
}

std::wstring Elide(std::wstring_view text, int columns) {
    int width = 0;
    std::size_t fitting = 0;  // characters that leave a column for the ellipsis
    for (std::size_t index = 0; index < text.size(); ++index) {
        width += WidthOf(text[index]);
        if (width < columns) fitting = index + 1;
        if (width > columns) return std::wstring(text.substr(0, fitting)) + kEllipsis;
    }
    return std::wstring(text);
}

}  // namespace app
