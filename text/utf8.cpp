#include "text/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace text {
namespace {

constexpr char32_t kLastCharacter = 0x10FFFF;

bool IsSurrogate(char32_t character) {
    return character >= 0xD800 && character <= 0xDFFF;
}

char Byte(char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
}

// What the first byte of a character says about the character.
struct Form {
    std::size_t length;  // bytes of the character; 0 if no character begins with this byte
    char32_t smallest;   // the smallest code that may be written with that many bytes
    char32_t firstBits;  // the bits of the code that are in the first byte

    bool IsValid() const { return length > 0; }
};

Form FormOf(unsigned char first) {
    if (first < 0x80) return {1, 0, first};
    if ((first & 0xE0U) == 0xC0) return {2, 0x80, first & 0x1FU};
    if ((first & 0xF0U) == 0xE0) return {3, 0x800, first & 0x0FU};
    if ((first & 0xF8U) == 0xF0) return {4, 0x10000, first & 0x07U};
    return {0, 0, 0};
}

// Searches `bytes` from the byte offset `at` on, eight bytes at a time. Returns the byte offset of
// the first byte that is not ASCII, or the size of `bytes` if all are.
std::size_t SkipAscii(std::string_view bytes, std::size_t at) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    for (; at + 8 <= bytes.size(); at += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes.data() + at, 8);
        if ((eight & kHighBits) != 0) break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

}  // namespace

void AppendUtf8(std::string& out, char32_t character) {
    if (!IsCharacter(character)) character = kReplacement;
    if (character < 0x80) {
        out += Byte(character);
    } else if (character < 0x800) {
        out += Byte(0xC0U | character >> 6U);
        out += Byte(0x80U | (character & 0x3FU));
    } else if (character < 0x10000) {
        out += Byte(0xE0U | character >> 12U);
        out += Byte(0x80U | (character >> 6U & 0x3FU));
        out += Byte(0x80U | (character & 0x3FU));
    } else {
        out += Byte(0xF0U | character >> 18U);
        out += Byte(0x80U | (character >> 12U & 0x3FU));
        out += Byte(0x80U | (character >> 6U & 0x3FU));
        out += Byte(0x80U | (character & 0x3FU));
    }
}

bool IsCharacter(char32_t character) {
    return character <= kLastCharacter && !IsSurrogate(character);
}

DecodedCharacter DecodeCharacter(std::string_view bytes) {
    if (bytes.empty()) return {};
    const Form form = FormOf(static_cast<unsigned char>(bytes[0]));
    if (!form.IsValid() || form.length > bytes.size()) return {};
    char32_t character = form.firstBits;
    for (std::size_t index = 1; index < form.length; ++index) {
        const auto byte = static_cast<unsigned char>(bytes[index]);
        if ((byte & 0xC0U) != 0x80) return {};
        character = character << 6U | (byte & 0x3FU);
    }
    if (character < form.smallest || !IsCharacter(character)) return {};
    return {form.length, character};
}

std::size_t FindInvalidUtf8(std::string_view bytes) {
    std::size_t at = 0;
    while ((at = SkipAscii(bytes, at)) < bytes.size()) {
        const DecodedCharacter next = DecodeCharacter(bytes.substr(at));
        if (!next.IsValid()) return at;
        at += next.length;
    }
    return std::string_view::npos;
}

std::string ReplaceInvalidUtf8(std::string_view bytes) {
    std::string out;
    for (;;) {
        const std::size_t invalid = std::min(FindInvalidUtf8(bytes), bytes.size());
        out.append(bytes.substr(0, invalid));
        if (invalid == bytes.size()) return out;
        AppendUtf8(out, kReplacement);
        bytes.remove_prefix(invalid + 1);
    }
}

std::string Shortened(std::string text, std::size_t most) {
    if (text.size() <= most) return text;
    constexpr std::string_view kEllipsis = "\xE2\x80\xA6";
    std::size_t end = most - std::min(most, kEllipsis.size());
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80)
        --end;
    text.resize(end);
    return text += kEllipsis;
}

}  // namespace text
