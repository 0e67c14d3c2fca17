// Checks, reads and writes UTF-8.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// The character that replaces codes and bytes that are no valid character.
inline constexpr char32_t kReplacement = 0xFFFD;

// Appends the bytes of a character. A code that is no character (see IsCharacter) is written as
// U+FFFD.
void AppendUtf8(std::string& out, char32_t character);

// Whether the code is a character of Unicode: it is no surrogate and not above U+10FFFF.
bool IsCharacter(char32_t character);

struct DecodedCharacter {
    std::size_t length = 0;  // in bytes, 1 to 4; 0 if there is no valid character
    char32_t character = 0;

    bool IsValid() const { return length > 0; }
};
// Decodes the character at the beginning of `bytes`. Overlong forms, surrogates and codes beyond
// U+10FFFF are not valid.
DecodedCharacter DecodeCharacter(std::string_view bytes);

// Returns the byte offset of the first byte that is not part of a valid character, or npos if there
// is no such byte.
std::size_t FindInvalidUtf8(std::string_view bytes);
inline bool IsValidUtf8(std::string_view bytes) {
    return FindInvalidUtf8(bytes) == std::string_view::npos;
}

// Replaces each byte that is not part of a valid character by U+FFFD.
std::string ReplaceInvalidUtf8(std::string_view bytes);

// Shortens valid UTF-8 to at most `most` bytes and never cuts a character. A shortened text ends
// with an ellipsis, which takes three of these bytes. `most` must be at least 3.
std::string Shortened(std::string text, std::size_t most);

}  // namespace text
