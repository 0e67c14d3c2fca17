#include "survey/row_scan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "survey/bvh_words.h"
#include "survey/number_word.h"

namespace survey {
namespace {

// The most blocks that one call of the kernel classifies.
constexpr std::size_t kBlocksAtOnce = 32;
// A decimal with at most this many characters is not too large for a double if its exponent has at
// most two digits.
constexpr std::size_t kLongestShortWord = 200;

bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Quickly recognises numbers such as "-1.5e-07". Most of the words with an exponent are like this.
bool IsShortExponent(std::string_view word) {
    std::size_t at = word.starts_with('-') ? 1 : 0;
    if (at == word.size() || !IsDigit(word[at]) || word.size() > kLongestShortWord) return false;
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
        // The last block is incomplete. It is filled up with line feeds, which also end the last
        // row.
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
    // Scans the block that begins with `at`. Returns false if the scan has to stop in this block.
    bool ScanBlock(const ByteMasks& block, const char* at) {
        const std::uint64_t words = ~block.white;
        const std::uint64_t starts = words & ~(words << 1 | (inWord_ ? 1U : 0U));
        const std::uint64_t odd = OddBytes(block, words, starts);
        const bool fine = odd == 0 || CheckWords(odd, block, starts, at);
        if (fine) return CountLines(block.lineEnds, starts);
        return false;
    }

    // Returns a mask of the bytes that make it doubtful that their word is a plain decimal. It
    // marks at least one byte of every word that is not a plain decimal. But if the word's only
    // fault is that it ends with a minus, the mask marks the byte after the word.
    std::uint64_t OddBytes(const ByteMasks& block, std::uint64_t words, std::uint64_t starts) {
        const std::uint64_t minusBefore = block.minuses << 1 | (afterMinus_ ? 1U : 0U);
        // A fraction is the digits after a point. `fractions` marks the byte after each point. It
        // also marks the first byte of the block if the previous block ended inside a fraction.
        // `seeds` marks the first digit of each fraction. When `seeds` is added to `digits`, a
        // carry runs through the digits of the fraction to the byte after them. If that byte is a
        // point, it is the second point of its word.
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
        // A block without white space is part of a long word, which may be too large for a double,
        // so the word is checked.
        return words == ~std::uint64_t{0} ? words : odd;
    }

    // Checks the words whose bytes the mask `odd` marks. If a marked byte is white space, the word
    // before it is checked, which ends with a minus. Returns false at the first word that is not
    // surely plain.
    bool CheckWords(std::uint64_t odd, const ByteMasks& block, std::uint64_t starts,
                    const char* at) {
        for (; odd != 0; odd &= odd - 1) {
            const int index = std::countr_zero(odd);
            const char* byte = at + index;
            if (byte < checked_) continue;
            if (byte >= last_ || IsSpace(*byte)) --byte;  // the minus that ends the word
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

    // Ends the scan before `word`, which is HIERARCHY. The scan is plain only if HIERARCHY is the
    // first word of its line.
    void EndRows(const ByteMasks& block, std::uint64_t starts, const char* at, const char* word) {
        const auto before = word < at ? 0 : (std::uint64_t{1} << (word - at)) - 1;
        if (!CountLines(block.lineEnds & before, starts & before)) return;
        // If HIERARCHY began in the previous block, it has already been counted as a word.
        plain_ = wordsInLine_ == (word < at ? 1U : 0U);
        end_ = word;
    }

    // Counts the rows that end in a block, and the words of the row that continues in the next
    // block. Returns false at a row with another number of words than expected.
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
    std::size_t words_;  // expected number of words in a row
    ByteMasksKernel kernel_;
    const char* checked_;  // end of the last word that CheckWords has checked
    const char* end_ = nullptr;
    std::size_t rows_ = 0;
    std::size_t wordsInLine_ = 0;  // words of the current line that begin before the next block
    bool plain_ = false;
    // Whether the last byte of the previous block was:
    bool inWord_ = false;      // a byte of a word
    bool afterMinus_ = false;  // a minus
    bool inFraction_ = false;  // a point, or a digit of a fraction
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
