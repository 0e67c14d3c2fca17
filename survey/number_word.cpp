#include "survey/number_word.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "textio/ascii.h"
#include "textio/number.h"

namespace survey {
namespace {

// The words given to ToDouble must end with a NUL, so they are copied. Words with fewer bytes than
// this are copied to an array, without allocating memory; longer ones to a std::string.
constexpr std::size_t kShortWord = 64;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsSign(char c) {
    return c == '-' || c == '+';
}

std::size_t SkipDigits(std::string_view word, std::size_t at) {
    while (at < word.size() && IsDigit(word[at]))
        ++at;
    return at;
}

// Returns the number of bytes of the decimal that the word begins with. `point` is its decimal
// point. Returns 0 if the word does not begin with a decimal.
std::size_t DecimalLength(std::string_view word, char point) {
    const std::size_t first = !word.empty() && IsSign(word[0]) ? 1 : 0;
    std::size_t at = SkipDigits(word, first);
    std::size_t digits = at - first;
    if (at < word.size() && word[at] == point) {
        const std::size_t end = SkipDigits(word, at + 1);
        digits += end - at - 1;
        at = end;
    }
    if (digits == 0) return 0;
    if (at < word.size() && (word[at] == 'e' || word[at] == 'E')) {
        const std::size_t sign = at + 1 < word.size() && IsSign(word[at + 1]) ? 1 : 0;
        const std::size_t end = SkipDigits(word, at + 1 + sign);
        if (end > at + 1 + sign) at = end;
    }
    return at;
}

double ValueOf(std::string_view decimal) {
    if (decimal.size() >= kShortWord) return textio::ToDouble(std::string(decimal).c_str());
    std::array<char, kShortWord> copy{};
    std::copy(decimal.begin(), decimal.end(), copy.begin());
    return textio::ToDouble(copy.data());
}

// The value of a decimal whose decimal point is a comma.
double CommaValue(std::string_view decimal) {
    std::string copy(decimal);
    std::replace(copy.begin(), copy.end(), ',', '.');
    return textio::ToDouble(copy.c_str());
}

bool IsGlued(std::string_view word) {
    for (std::size_t parts = 1;; ++parts) {
        const std::size_t length = DecimalLength(word, '.');
        if (length == 0) return false;
        if (length == word.size()) return parts > 1;
        word.remove_prefix(length);
        if (!IsSign(word[0])) return false;
    }
}

bool IsNotFiniteWord(std::string_view word) {
    std::string lower(word);
    std::transform(lower.begin(), lower.end(), lower.begin(), textio::ToLower);
    std::string_view rest = lower;
    if (!rest.empty() && IsSign(rest[0])) rest.remove_prefix(1);
    // One C library wrote "1.#IND", "1.#QNAN" and "1.#INF00".
    return rest == "inf" || rest == "infinity" || rest.starts_with("nan") ||
           rest.starts_with("1.#");
}

}  // namespace

WordKind ClassifyWord(std::string_view word, double& value) {
    // Nearly every word is a plain decimal, which is read in one pass.
    const char* const end = word.data() + word.size();
    if (double plain = 0.0;
        !word.empty() && textio::ReadPlainDecimal(word.data(), end, plain) == end) {
        value = plain;
        return WordKind::Number;
    }
    const std::size_t length = DecimalLength(word, '.');
    if (length == word.size() && length > 0) {
        const double number = ValueOf(word);
        if (!std::isfinite(number)) return WordKind::NotFinite;
        value = number;
        return WordKind::Number;
    }
    if (word.size() == DecimalLength(word, ',') && !word.empty()) {
        const double number = CommaValue(word);
        if (!std::isfinite(number)) return WordKind::NotFinite;
        value = number;
        return WordKind::Comma;
    }
    if (IsGlued(word)) return WordKind::Glued;
    return IsNotFiniteWord(word) ? WordKind::NotFinite : WordKind::Other;
}

std::vector<std::string_view> SplitGlued(std::string_view word) {
    std::vector<std::string_view> parts;
    while (!word.empty()) {
        const std::size_t length = DecimalLength(word, '.');
        if (length == 0) return {};
        parts.push_back(word.substr(0, length));
        word.remove_prefix(length);
    }
    return parts;
}

bool IsPlainWord(std::string_view word, double value) {
    return value != 0.0 || word.starts_with('0') || word.starts_with("-0");
}

}  // namespace survey
