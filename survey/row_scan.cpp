#include "survey/row_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "survey/bvh_words.h"
#include "survey/number_word.h"

namespace survey {
namespace {

constexpr std::size_t kBlocksAtOnce = 32;
// A decimal of so few characters, with an exponent of two digits, is far from a double's limits.
constexpr std::size_t kShortMantissa = 200;

bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// "-1.5e-07": most of the words that are no plain decimals.
bool IsShortExponent(std::string_view word) {
    std::size_t at = word.starts_with('-') ? 1 : 0;
    if (at == word.size() || !IsDigit(word[at]) || word.size() > kShortMantissa) return false;
    while (at < word.size() && IsDigit(word[at]))
        ++at;
    if (at < word.size() && word[at] == '.')
        for (++at; at < word.size() && IsDigit(word[at]);)
            ++at;
    if (at == word.size() || (word[at] != 'e' && word[at] != 'E')) return false;
    ++at;
    if (at < word.size() && (word[at] == '-' || word[at] == '+')) ++at;
    while (at < word.size() && word[at] == '0')
        ++at;
    const std::size_t digits = word.size() - at;
    return (digits > 0 || IsDigit(word.back())) && digits <= 2 &&
           std::all_of(word.begin() + static_cast<std::ptrdiff_t>(at), word.end(), IsDigit);
}

class Scanner {
  public:
    Scanner(std::string_view text, std::size_t words, ByteMasksKernel kernel)
        : first_(text.data()),
          last_(text.data() + text.size()),
          words_(words),
          kernel_(kernel),
          checked_(first_) {}

    RowScan Scan() {
        const char* at = first_;
        std::array<ByteMasks, kBlocksAtOnce> masks;
        while (static_cast<std::size_t>(last_ - at) >= kMaskBlock) {
            const std::size_t left = static_cast<std::size_t>(last_ - at) / kMaskBlock;
            const std::size_t blocks = std::min(left, kBlocksAtOnce);
            kernel_(at, blocks, masks.data());
            for (std::size_t block = 0; block < blocks; ++block, at += kMaskBlock)
                if (!ScanBlock(masks[block], at)) return Result();
        }
        // The rest, and a line end after it.
        std::array<char, kMaskBlock> rest;
        rest.fill('\n');
        std::memcpy(rest.data(), at, static_cast<std::size_t>(last_ - at));
        kernel_(rest.data(), 1, masks.data());
        if (ScanBlock(masks[0], at)) {
            plain_ = true;
            end_ = last_;
        }
        return Result();
    }

  private:
    // False where the rest is not to be looked at.
    bool ScanBlock(const ByteMasks& block, const char* at) {
        const std::uint64_t words = ~block.white;
        const std::uint64_t starts = words & ~(words << 1 | (inWord_ ? 1U : 0U));
        const std::uint64_t odd = OddBytes(block, words, starts);
        const bool fine = odd == 0 || CheckWords(odd, block, starts, at);
        if (fine) return CountLines(block.lineEnds, starts);
        return false;
    }

    // Bytes for which a word may be no plain decimal; for each that is none, a byte of it, or of
    // the block after its first ones.
    std::uint64_t OddBytes(const ByteMasks& block, std::uint64_t words, std::uint64_t starts) {
        const std::uint64_t minusBefore = block.minuses << 1 | (afterMinus_ ? 1U : 0U);
        // Digits after a point, with those of the block before.
        std::uint64_t fractions = block.points << 1 | (inFraction_ ? 1U : 0U);
        const std::uint64_t seeds = fractions & block.digits;
        std::uint64_t ends = 0;
        const bool carry = __builtin_add_overflow(block.digits, seeds, &ends);
        const std::uint64_t secondPoints = block.points & (fractions | (ends & ~block.digits));
        const std::uint64_t odd = (words & ~(block.digits | block.points | block.minuses)) |
                                  (block.minuses & ~starts) | (starts & block.points) |
                                  (minusBefore & ~block.digits) | secondPoints;
        inFraction_ = carry || (block.points >> 63U) != 0;
        afterMinus_ = (block.minuses >> 63U) != 0;
        inWord_ = (words >> 63U) != 0;
        // A word that fills a block may be of any length.
        return words == ~std::uint64_t{0} ? words : odd;
    }

    // Looks at the words that the odd bytes are of or, where a minus ends them, follow.
    bool CheckWords(std::uint64_t odd, const ByteMasks& block, std::uint64_t starts,
                    const char* at) {
        for (; odd != 0; odd &= odd - 1) {
            const int index = std::countr_zero(odd);
            const char* byte = at + index;
            if (byte < checked_) continue;
            if (byte >= last_ || IsSpace(*byte)) --byte;  // after a minus alone
            const char* first = byte;
            while (first > first_ && !IsSpace(first[-1]))
                --first;
            const char* last = byte;
            while (last < last_ && !IsSpace(*last))
                ++last;
            checked_ = last;
            const std::string_view word(first, static_cast<std::size_t>(last - first));
            if (IsSurelyPlain(word)) continue;
            if (EqualsWord(word, "HIERARCHY")) EndRows(block, starts, at, first);
            return false;
        }
        return true;
    }

    // The rows end where a line begins with the word.
    void EndRows(const ByteMasks& block, std::uint64_t starts, const char* at, const char* word) {
        const auto before = word < at ? 0 : (std::uint64_t{1} << (word - at)) - 1;
        if (!CountLines(block.lineEnds & before, starts & before)) return;
        plain_ = wordsInLine_ == (word < at ? 1U : 0U);
        end_ = word;
    }

    bool CountLines(std::uint64_t lineEnds, std::uint64_t starts) {
        for (; lineEnds != 0; lineEnds &= lineEnds - 1) {
            const std::uint64_t below = lineEnds ^ (lineEnds - 1);
            wordsInLine_ += static_cast<std::size_t>(std::popcount(starts & below));
            starts &= ~below;
            if (wordsInLine_ == 0) continue;
            if (wordsInLine_ != words_) return false;
            ++rows_;
            wordsInLine_ = 0;
        }
        wordsInLine_ += static_cast<std::size_t>(std::popcount(starts));
        return true;
    }

    RowScan Result() const { return {rows_, plain_, end_}; }

    const char* first_;
    const char* last_;
    std::size_t words_;
    ByteMasksKernel kernel_;
    const char* checked_;  // words before this need no further look
    const char* end_ = nullptr;
    std::size_t rows_ = 0;
    std::size_t wordsInLine_ = 0;
    bool plain_ = false;
    bool inWord_ = false;
    bool afterMinus_ = false;
    bool inFraction_ = false;
};

}  // namespace

bool IsSurelyPlain(std::string_view word) {
    if (IsShortExponent(word)) return true;
    double value = 0.0;
    return ClassifyWord(word, value) == WordKind::Number && IsPlainWord(word, value);
}

RowScan ScanRows(std::string_view text, std::size_t words, ByteMasksKernel kernel) {
    return Scanner(text, words, kernel).Scan();
}

}  // namespace survey
