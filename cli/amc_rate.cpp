#include "cli/amc_rate.h"

#include <charconv>
#include <string>
#include <strings.h>

namespace cli {
namespace {

// The most bytes of a token that are kept. The keyword and every sensible number are shorter.
constexpr std::size_t kTokenLimit = 64;

bool IsSeparator(char character) {
    return std::string_view("\t\r\n (),").find(character) != std::string_view::npos;
}

// Skips separators and comments, then reads the next token and removes all of this from the text.
// Returns an empty text if the text ends, or a NUL byte comes, before a token.
std::string NextToken(std::string_view& text) {
    std::string token;
    bool inComment = false;
    for (; !text.empty() && text.front() != '\0'; text.remove_prefix(1)) {
        const char character = text.front();
        if (inComment) {
            inComment = character != '\n' && character != '\r';
        } else if (IsSeparator(character)) {
            if (!token.empty()) break;
        } else if (token.empty() && character == '#') {
            inComment = true;
        } else if (token.size() < kTokenLimit) {
            token += character;
        }
    }
    return token;
}

}  // namespace

bool StatesRate(std::string_view amc) {
    if (strcasecmp(NextToken(amc).c_str(), ":SAMPLES-PER-SECOND") != 0) return false;
    const std::string number = NextToken(amc);
    const char* start = number.c_str() + (number.starts_with('+') ? 1 : 0);
    int rate = 0;
    const auto [end, error] = std::from_chars(start, number.c_str() + number.size(), rate);
    return error == std::errc() && rate > 1;
}

}  // namespace cli
