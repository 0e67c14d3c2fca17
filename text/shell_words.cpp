#include "text/shell_words.h"

#include <algorithm>
#include <fmt/format.h>

#include "text/escapes.h"
#include "text/wide_text.h"

namespace text {
namespace {

// A word that consists only of these characters needs no quotes.
constexpr std::string_view kPlain =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-./,:=@%+";

// Returns the word in single quotes.
std::string Quoted(std::string_view word) {
    std::string quoted = "'";
    for (const char character : word) {
        if (character == '\'')
            quoted += "'\\''";
        else
            quoted += character;
    }
    return quoted + '\'';
}

// Returns a command substitution that prints the word. Special bytes are written as escapes. Quoted
// is not enough for a line feed: it would keep the line feed as it is, and the result would be two
// lines of text. ShellWord must return one line.
std::string Printed(std::string_view word) {
    std::string printed = "\"$(printf %b '";
    for (const char character : word) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte > 0x7E || character == '\'' || character == '\\')
            printed += fmt::format("\\0{:03o}", byte);
        else
            printed += character;
    }
    return printed + "')\"";
}

}  // namespace

std::string ShellWord(std::string_view word) {
    const std::wstring text = DecodeUtf8(word);
    if (std::any_of(text.begin(), text.end(), IsControl)) return Printed(word);
    const bool isPlain = !word.empty() && word.find_first_not_of(kPlain) == std::string_view::npos;
    return isPlain ? std::string(word) : Quoted(word);
}

std::string ShellLine(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words)
        line += (line.empty() ? "" : " ") + ShellWord(word);
    return line;
}

}  // namespace text
