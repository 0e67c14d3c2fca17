#include "textio/row_reader.h"

#include <cstdint>

#include "textio/decimal.h"
#include "textio/number.h"
#include "textio/row_masks.h"

namespace textio {
namespace {

// A space, a tab, a carriage return, a line feed or the end of the text.
bool EndsToken(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\0';
}

// Reads any number as CStringFile::GetNextFloat does. Returns the end of the token. Returns null if
// the token is not accepted, if it is longer than numbers are, or if it contains a comma or a
// parenthesis.
const char* ReadAnyNumber(const char* at, const char* last, double& value) {
    const char* end = ReadPlainDecimal(at, last, value);
    if (end != nullptr && EndsToken(*end)) return end;
    constexpr std::ptrdiff_t kLongestText = 400;
    char token[kLongestText + 1] = {};
    for (end = at; !EndsToken(*end); ++end) {
        if (end - at == kLongestText || *end == ',' || *end == '(' || *end == ')') return nullptr;
        token[end - at] = *end;
    }
    token[end - at] = '\0';
    value = ToDouble(token);
    return value != 0.0 || IsAcceptedZero(token) ? end : nullptr;
}

// As ReadAnyNumber. The digits of nearly all numbers form an integer below 2^53, which is divided
// once by a power of ten, as ReadPlainDecimal does.
inline const char* ReadNumber(const char* at, const char* last, double& value) {
    const bool negative = *at == '-';
    const char* const start = at + (negative ? 1 : 0);
    std::uint64_t digits = 0;
    const char* const point = ReadDigits(start, digits);
    // A token that begins with a point may be a zero that is not accepted.
    if (point == start) return ReadAnyNumber(at, last, value);
    const char* end = point;
    std::ptrdiff_t decimals = 0;
    if (*point == '.') {
        end = ReadDigits(point + 1, digits);
        decimals = end - point - 1;
    }
    const std::ptrdiff_t count = (point - start) + decimals;
    // More than 19 digits may not fit into the integer.
    if (count > kSafeDigits || digits >= kExactIntegers || !EndsToken(*end))
        return ReadAnyNumber(at, last, value);
    // A signed integer is converted faster.
    const double number =
        static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[decimals];
    value = negative ? -number : number;
    return end;
}

}  // namespace

const char* SkipToRow(const char* at) {
    while (*at != '\0' && EndsToken(*at))
        ++at;
    return at;
}

const char* ReadRow(const char* at, const char* last, const RowTarget& target, std::size_t row) {
#ifdef TEXTIO_HAS_ROW_MASKS
    if (const char* const next = ReadRowByMasks(at, last, target, row)) return next;
#endif
    return ReadRowByDigits(at, last, target, row);
}

const char* ReadRowByDigits(const char* at, const char* last, const RowTarget& target,
                            std::size_t row) {
    const auto skipBlanks = [&at] {
        while (*at == ' ' || *at == '\t' || *at == '\r')
            ++at;
    };
    for (std::size_t column = 0; column < target.width; ++column) {
        skipBlanks();
        at = ReadNumber(at, last, target.columns[column][row]);
        if (at == nullptr) return nullptr;
    }
    skipBlanks();
    if (*at == '\n') return at + 1;
    return at == last ? at : nullptr;
}

}  // namespace textio
