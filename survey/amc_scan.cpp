#include "survey/amc_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "survey/number_word.h"
#include "survey/source_text.h"
#include "textio/number.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace survey {
namespace {

constexpr std::size_t kLookahead = 64;  // the most bytes of a line that are classified at once
// The most digits of a frame's number. A frame whose number has more digits does not match.
constexpr int kLongestFrameNumber = 9;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsGap(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Tells the kinds of up to 64 bytes. Bit i of each mask is set if byte i is of that kind.
struct Kinds {
    std::uint64_t digits = 0;
    std::uint64_t points = 0;
    std::uint64_t minuses = 0;
    std::uint64_t gaps = 0;   // spaces, tabs and carriage returns
    std::uint64_t feeds = 0;  // line feeds

    void Append(const Kinds& more, unsigned shift) {
        digits |= more.digits << shift;
        points |= more.points << shift;
        minuses |= more.minuses << shift;
        gaps |= more.gaps << shift;
        feeds |= more.feeds << shift;
    }
};

constexpr unsigned kStep = 16;  // number of bytes that KindsAt classifies

#ifdef __SSE2__
std::uint64_t Bits(__m128i bytes) {
    return static_cast<std::uint64_t>(_mm_movemask_epi8(bytes));
}

Kinds KindsAt(const char* at) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    const auto is = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
    // Shifts the values so that the digits are the ten lowest signed bytes.
    const __m128i moved = _mm_sub_epi8(bytes, _mm_set1_epi8(static_cast<char>('0' - 128)));
    Kinds kinds;
    kinds.digits = Bits(_mm_cmplt_epi8(moved, _mm_set1_epi8(-118)));
    kinds.points = Bits(is('.'));
    kinds.minuses = Bits(is('-'));
    kinds.gaps = Bits(_mm_or_si128(is(' '), _mm_or_si128(is('\t'), is('\r'))));
    kinds.feeds = Bits(is('\n'));
    return kinds;
}
#else
Kinds KindsAt(const char* at) {
    Kinds kinds;
    for (unsigned i = 0; i < kStep; ++i) {
        const std::uint64_t bit = std::uint64_t{1} << i;
        if (IsDigit(at[i])) kinds.digits |= bit;
        if (at[i] == '.') kinds.points |= bit;
        if (at[i] == '-') kinds.minuses |= bit;
        if (IsGap(at[i])) kinds.gaps |= bit;
        if (at[i] == '\n') kinds.feeds |= bit;
    }
    return kinds;
}
#endif

// Whether exactly `count` bits are set. `count` is small, so this is fast even on a processor that
// has no instruction for counting bits.
bool HasBits(std::uint64_t bits, unsigned count) {
    for (; count > 0 && bits != 0; --count)
        bits &= bits - 1;
    return count == 0 && bits == 0;
}

// Whether the first `length` bytes, which end before a line feed, begin with a gap and hold exactly
// `values` decimals. A decimal may begin with "-", needs a digit before its point, and has no
// exponent.
bool AreDecimals(const Kinds& kinds, unsigned length, unsigned values) {
    const std::uint64_t line = (std::uint64_t{1} << length) - 1;
    const std::uint64_t digits = kinds.digits & line;
    const std::uint64_t points = kinds.points & line;
    const std::uint64_t minuses = kinds.minuses & line;
    const std::uint64_t words = digits | points | minuses;
    if ((words | (kinds.gaps & line)) != line || (words & 1U) != 0) return false;
    const std::uint64_t starts = words & ~(words << 1U);
    const std::uint64_t afterMinus = minuses << 1U;
    const std::uint64_t afterPoint = points << 1U;
    // The addition carries through the digits after each point to the character after them, so
    // `ends` marks the character after each decimal with a point. That character must not be part
    // of a word.
    const std::uint64_t runs = afterPoint & digits;
    const std::uint64_t ends = ((digits + runs) & ~digits) | (afterPoint & ~digits);
    return (minuses & ~starts) == 0 && (afterMinus & ~digits) == 0 && (starts & points) == 0 &&
           (ends & words) == 0 && HasBits(starts, values);
}

}  // namespace

void AmcScan::Learn(const AmcFrame& first) {
    rows_.clear();
    for (const AmcRow& row : first.rows) {
        Row& known = rows_.emplace_back();
        known.name = row.name;
        known.values = static_cast<unsigned>(row.count);
        std::array<char, sizeof(known.word)> bytes{};
        std::array<char, sizeof(known.word)> mask{};
        const std::size_t length = std::min(known.name.size(), bytes.size());
        std::copy_n(known.name.begin(), length, bytes.begin());
        std::fill_n(mask.begin(), length, '\xFF');
        std::memcpy(known.word, bytes.data(), bytes.size());
        std::memcpy(known.mask, mask.data(), mask.size());
    }
}

const char* AmcScan::MatchFrame(const char* at, std::uint32_t& number) const {
    at = MatchNumber(at, number);
    for (auto row = rows_.begin(); at && row != rows_.end(); ++row) {
        while (at < end_ && IsGap(*at))
            ++at;
        if (!BeginsWith(*row, at)) return nullptr;
        at = MatchValues(at + row->name.size(), row->values);
    }
    if (!at) return nullptr;
    while (at < end_ && (IsGap(*at) || *at == '\n'))
        ++at;
    return at == end_ || IsDigit(*at) ? at : nullptr;
}

bool AmcScan::BeginsWith(const Row& row, const char* at) const {
    const std::size_t length = row.name.size();
    if (static_cast<std::size_t>(end_ - at) < std::max(length + 1, sizeof(row.word)))
        return static_cast<std::size_t>(end_ - at) > length &&
               std::memcmp(at, row.name.data(), length) == 0;
    std::uint64_t word[2];
    std::memcpy(word, at, sizeof(word));
    if ((((word[0] & row.mask[0]) ^ row.word[0]) | ((word[1] & row.mask[1]) ^ row.word[1])) != 0)
        return false;
    return length <= sizeof(word) || std::memcmp(at, row.name.data(), length) == 0;
}

const char* AmcScan::MatchNumber(const char* at, std::uint32_t& number) const {
    number = 0;
    int digits = 0;
    for (; at < end_ && IsDigit(*at) && digits < kLongestFrameNumber; ++at, ++digits)
        number = 10 * number + static_cast<std::uint32_t>(*at - '0');
    while (at < end_ && IsGap(*at))
        ++at;
    return digits > 0 && at < end_ && *at == '\n' ? at + 1 : nullptr;
}

// Checks whether the rest of a line is `values` values that the plug-in reads. `at` is the end of
// the row's name. Returns the position after the line feed; null if the check fails.
const char* AmcScan::MatchValues(const char* at, unsigned values) const {
    if (static_cast<std::size_t>(end_ - at) < kLookahead) return ReadValues(at, values);
    Kinds kinds = KindsAt(at);
    for (unsigned step = kStep; kinds.feeds == 0; step += kStep) {
        if (step == kLookahead) return ReadValues(at, values);
        kinds.Append(KindsAt(at + step), step);
    }
    const auto length = static_cast<unsigned>(std::countr_zero(kinds.feeds));
    if (AreDecimals(kinds, length, values)) return at + length + 1;
    return ReadValues(at, values);
}

// Does the same as MatchValues, but more slowly and for every line. Lines may be long or at the
// text's end, and numbers may have other forms.
const char* AmcScan::ReadValues(const char* at, unsigned values) const {
    for (unsigned read = 0;; ++read) {
        const char* const gap = at;
        while (at < end_ && IsGap(*at))
            ++at;
        if (at == end_ || *at == '\n') return read == values ? std::min(at + 1, end_) : nullptr;
        if (at == gap || read == values) return nullptr;
        const char* const last = std::find_if(at, end_, IsWhite);
        double value = 0.0;
        if (textio::ReadPlainDecimal(at, end_, value) != last) {
            const std::string_view word(at, static_cast<std::size_t>(last - at));
            if (ClassifyWord(word, value) != WordKind::Number || !IsPlainWord(word, value))
                return nullptr;
        }
        at = last;
    }
}

}  // namespace survey
