// Finds the separators and the points of 64 bytes at a time. The numbers between them are then
// converted without a loop over their digits, and without branches that depend on their lengths.
#include "textio/row_masks.h"

#ifdef TEXTIO_HAS_ROW_MASKS

#include <cstdint>
#include <cstring>
#include <emmintrin.h>

#include "textio/decimal.h"

namespace textio {
namespace {

constexpr std::ptrdiff_t kWindow = 64;
constexpr int kMostDigits = 8;  // before the point, and what is converted at once after it
constexpr int kMostDecimals = 2 * kMostDigits;
// A sign, the digits of most numbers, a point and a separator.
constexpr std::ptrdiff_t kLongest = 2 * kMostDigits + 3;
// So many bytes may be read from the start of a number on.
constexpr std::ptrdiff_t kReadBytes = kWindow + kLongest;

constexpr std::uint64_t kWholePowersOfTen[] = {1,
                                               10,
                                               100,
                                               1000,
                                               10000,
                                               100000,
                                               1000000,
                                               10000000,
                                               100000000,
                                               1000000000,
                                               10000000000,
                                               100000000000,
                                               1000000000000,
                                               10000000000000,
                                               100000000000000,
                                               1000000000000000,
                                               10000000000000000};

// Bit i is about the byte base[i].
struct Window {
    const char* base = nullptr;
    std::uint64_t ends = 0;    // the byte is a space or has a lower code
    std::uint64_t points = 0;  // the byte is a point
};

Window Look(const char* at) {
    Window window{at, 0, 0};
    const __m128i space = _mm_set1_epi8(' ');
    const __m128i point = _mm_set1_epi8('.');
    for (int part = 0; part < 4; ++part) {
        const __m128i bytes =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * std::ptrdiff_t{part}));
        const auto bits = [part](__m128i found) {
            return std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(found))}
                   << (16 * part);
        };
        window.ends |= bits(_mm_cmpeq_epi8(_mm_min_epu8(bytes, space), bytes));
        window.points |= bits(_mm_cmpeq_epi8(bytes, point));
    }
    return window;
}

// Returns the values of `count` digits as the last bytes of a word; the bytes before them are 0.
std::uint64_t DigitValues(const char* at, int count) {
    if (count == 0) return 0;
    std::uint64_t word = 0;
    std::memcpy(&word, at, sizeof(word));
    return (word ^ 0x3030303030303030) << (8 * (kMostDigits - count));
}

// Whether each byte is a digit's value.
bool AreDigits(std::uint64_t values) {
    return (((values + 0x7676767676767676) | values) & 0x8080808080808080) == 0;
}

// Returns the number that eight digits' values form. Adds neighbours in three steps.
std::uint64_t Joined(std::uint64_t values) {
    values = values * 10 + (values >> 8);
    constexpr std::uint64_t kMask = 0x000000FF000000FF;
    constexpr std::uint64_t kFirst = 100 + (std::uint64_t{1000000} << 32);
    constexpr std::uint64_t kSecond = 1 + (std::uint64_t{10000} << 32);
    return ((values & kMask) * kFirst + ((values >> 16) & kMask) * kSecond) >> 32;
}

// Reads more than kMostDigits decimals, but at most kMostDecimals. Returns false if not all of them
// are digits.
bool ReadLongDecimals(const char* at, int decimals, std::uint64_t& value) {
    const std::uint64_t first = DigitValues(at, kMostDigits);
    const std::uint64_t rest = DigitValues(at + kMostDigits, decimals - kMostDigits);
    value = Joined(first) * kWholePowersOfTen[decimals - kMostDigits] + Joined(rest);
    return AreDigits(first) && AreDigits(rest);
}

// The compiler would make a branch of a condition, and signs cannot be predicted.
double WithSign(double number, int sign) {
    const __m128i bit = _mm_slli_epi64(_mm_cvtsi32_si128(sign), 63);
    return _mm_cvtsd_f64(_mm_or_pd(_mm_set_sd(number), _mm_castsi128_pd(bit)));
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

}  // namespace

const char* ReadRowByMasks(const char* at, const char* last, const RowTarget& target,
                           std::size_t row) {
    Window window{at, 0, 0};
    std::ptrdiff_t offset = kWindow;
    for (std::size_t column = 0; column < target.width; ++column) {
        for (; IsBlank(*at); ++at)
            ++offset;
        if (offset > kWindow - kLongest) {
            if (last - at < kReadBytes) return nullptr;
            window = Look(at);
            offset = 0;
        }
        std::uint64_t ends = window.ends >> offset;
        if (ends == 0 && offset > 0) {
            if (last - at < kReadBytes) return nullptr;
            window = Look(at);
            offset = 0;
            ends = window.ends;
        }
        if (ends == 0) return nullptr;  // the number is longer than a window
        // The highest bit stands for a point that is missing.
        const std::uint64_t points = (window.points >> offset) | (std::uint64_t{1} << 63);
        const int length = __builtin_ctzll(ends);
        const int firstPoint = __builtin_ctzll(points);
        const int point = firstPoint < length ? firstPoint : length;
        const int sign = *at == '-' ? 1 : 0;
        const int whole = point - sign;
        const int decimals = point < length ? length - point - 1 : 0;
        if (whole < 1 || whole > kMostDigits || decimals > kMostDecimals) return nullptr;
        const std::uint64_t before = DigitValues(at + sign, whole);
        if (!AreDigits(before)) return nullptr;
        std::uint64_t fraction = 0;
        if (decimals > kMostDigits) {
            // More than 19 digits may not fit into the integer.
            if (whole + decimals > kSafeDigits ||
                !ReadLongDecimals(at + point + 1, decimals, fraction))
                return nullptr;
        } else {
            const std::uint64_t after = DigitValues(at + point + 1, decimals);
            if (!AreDigits(after)) return nullptr;
            fraction = Joined(after);
        }
        const std::uint64_t digits = Joined(before) * kWholePowersOfTen[decimals] + fraction;
        if (digits >= kExactIntegers) return nullptr;
        // A signed integer is converted faster.
        const double number =
            static_cast<double>(static_cast<std::int64_t>(digits)) / kPowersOfTen[decimals];
        target.columns[column][row] = WithSign(number, sign);
        at += length;
        offset += length;
    }
    while (IsBlank(*at))
        ++at;
    if (*at == '\n') return at + 1;
    return at == last ? at : nullptr;
}

}  // namespace textio

#endif
