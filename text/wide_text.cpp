#include "text/wide_text.h"

#include "text/utf8.h"

namespace text {
namespace {

char32_t CodeOf(wchar_t character) {
    // A negative value becomes a large code, which is no character.
    // NOLINTNEXTLINE(bugprone-signed-char-misuse,cert-str34-c)
    return static_cast<char32_t>(character);
}

// A byte that is not part of valid UTF-8 is decoded as the surrogate kFirstByteSurrogate + byte.
constexpr char32_t kFirstByteSurrogate = 0xDC00;

}  // namespace

std::wstring DecodeUtf8(std::string_view bytes) {
    std::wstring wide;
    wide.reserve(bytes.size());
    while (!bytes.empty()) {
        const DecodedCharacter next = DecodeCharacter(bytes);
        const bool isValid = next.IsValid();
        const char32_t code = isValid
                                  ? next.character
                                  : kFirstByteSurrogate + static_cast<unsigned char>(bytes.front());
        wide += static_cast<wchar_t>(code);
        bytes.remove_prefix(isValid ? next.length : 1);
    }
    return wide;
}

bool IsCharacter(wchar_t character) {
    return IsCharacter(CodeOf(character));
}

std::string EncodeUtf8(std::wstring_view wide) {
    std::string bytes;
    bytes.reserve(wide.size());
    for (const wchar_t character : wide)
        AppendUtf8(bytes, CodeOf(character));
    return bytes;
}

}  // namespace text
