#include "survey/quoted_word.h"

#include <algorithm>

#include "survey/encoding.h"
#include "text/utf8.h"

namespace survey {
namespace {

constexpr std::size_t kMostBytes = 40;

bool IsContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80;
}

}  // namespace

std::string Quoted(std::string_view word) {
    std::size_t size = std::min(word.size(), kMostBytes);
    // The cut must not split a character. A character has at most three bytes after its first one.
    for (std::size_t back = 0; back < 3 && size < word.size() && IsContinuation(word[size]); ++back)
        --size;
    const std::string_view shown = word.substr(0, size);
    std::string quoted = text::IsValidUtf8(shown) ? std::string(shown) : Windows1252ToUtf8(shown);
    std::replace_if(
        quoted.begin(), quoted.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; },
        ' ');
    return "\"" + quoted + (size < word.size() ? "...\"" : "\"");
}

}  // namespace survey
