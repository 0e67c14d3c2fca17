#include "cli/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>

namespace cli {
namespace {

// Longer words are compared with nothing, because the time rises with the square of the length.
constexpr std::size_t kLongestWord = 64;

// The most edits at which two words are near. The longer of the two words has this many letters.
std::size_t MostEdits(std::size_t letters) {
    if (letters < 2) return 0;
    return letters < 7 ? 1 : letters < 12 ? 2 : 3;
}

// Returns how many letters have to be inserted, deleted, replaced or swapped with their neighbour
// to make one word from the other.
std::size_t Edits(std::string_view a, std::string_view b) {
    // Row i has the edits from the first i letters of `a` to the first letters of `b`. Only the
    // last three rows are kept.
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    for (char& character : lower)
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    return lower;
}

std::string NearestWord(std::string_view word, const std::vector<std::string>& known) {
    if (word.size() > kLongestWord) return {};
    const std::string wanted = LowerCase(word);
    std::string nearest;
    std::size_t fewest = kLongestWord;
    for (const std::string& candidate : known) {
        const std::size_t edits = Edits(wanted, LowerCase(candidate));
        if (edits >= fewest || edits > MostEdits(std::max(word.size(), candidate.size()))) continue;
        nearest = candidate;
        fewest = edits;
    }
    return nearest;
}

std::string Suggestion(std::string_view word, const std::vector<std::string>& known) {
    const std::string nearest = NearestWord(word, known);
    return nearest.empty() ? std::string() : fmt::format("; did you mean '{}'?", nearest);
}

std::string ListOf(const std::vector<std::string>& words, std::string_view last) {
    std::string list;
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (index > 0) list += index + 1 < words.size() ? ", " : fmt::format(" {} ", last);
        list += words[index];
    }
    return list;
}

}  // namespace cli
