// UTF-8 as bytes: whether a text is valid, and how characters are written and read.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace text {

// What stands in for a character that cannot be read.
inline constexpr char32_t kReplacement = 0xFFFD;

// Appends the character's bytes. What is no character of Unicode's (a surrogate, or beyond
// U+10FFFF) is written as U+FFFD.
void AppendUtf8(std::string& out, char32_t character);

// Whether it is one of Unicode's: no surrogate, and nothing beyond U+10FFFF.
bool IsCharacter(char32_t character);

struct DecodedCharacter {
    std::size_t length = 0;  // in bytes, 1 to 4; 0: there is no valid character
    char32_t character = 0;
};
// The valid character that `bytes` begins with, if it does. Overlong forms, surrogates and what
// lies beyond U+10FFFF are not valid.
DecodedCharacter DecodeCharacter(std::string_view bytes);

// The index of the first byte that is no part of a valid character; npos where all are.
std::size_t FindInvalidUtf8(std::string_view bytes);
inline bool IsValidUtf8(std::string_view bytes) {
    return FindInvalidUtf8(bytes) == std::string_view::npos;
}

// The text with U+FFFD in the stead of each byte that is no part of a valid character.
std::string ReplaceInvalidUtf8(std::string_view bytes);

// As much of the valid text as fits into `most` bytes, in whole characters, with an ellipsis at the
// end where something was left out.
std::string Shortened(std::string text, std::size_t most);

}  // namespace text
