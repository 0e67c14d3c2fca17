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
// A decimal with at most this many characters and an exponent of two digits fits a double.
constexpr std::size_t kShortMantissa = 200;

bool IsDigit(char c) {
    return static_cast<unsigned char>(c - '0') < 10;
}

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Recognises numbers such as "-1.5e-07" quickly, which are most of the words with an exponent.
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
        // The last, incomplete block, filled up with line ends.
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
    // Returns false if the rest of the text is not to be scanned.
    bool ScanBlock(const ByteMasks& block, const char* at) {
        const std::uint64_t words = ~block.white;
        const std::uint64_t starts = words & ~(words << 1 | (inWord_ ? 1U : 0U));
        const std::uint64_t odd = OddBytes(block, words, starts);
        const bool fine = odd == 0 || CheckWords(odd, block, starts, at);
        if (fine) return CountLines(block.lineEnds, starts);
        return false;
    }

    // Marks bytes because of which a word may not be a plain decimal. Every word that is none gets
    // at least one mark: on one of its bytes or, after a final minus, on the byte after the word.
    std::uint64_t OddBytes(const ByteMasks& block, std::uint64_t words, std::uint64_t starts) {
        const std::uint64_t minusBefore = block.minuses << 1 | (afterMinus_ ? 1U : 0U);
        // Bit of the byte after each point, or of the first byte if the block before ended in a
        // fraction. Adding it to the digits carries to the byte after the fraction, where a second
        // point is then found.
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
        // A word that fills a whole block is checked, since its length is not known.
        return words == ~std::uint64_t{0} ? words : odd;
    }

    // Checks each word that holds an odd byte, or that ends with a minus before it. Returns false
    // at the first word that is not surely plain.
    bool CheckWords(std::uint64_t odd, const ByteMasks& block, std::uint64_t starts,
                    const char* at) {
        for (; odd != 0; odd &= odd - 1) {
            const int index = std::countr_zero(odd);
            const char* byte = at + index;
            if (byte < checked_) continue;
            if (byte >= last_ || IsSpace(*byte)) --byte;  // the word ends with a minus
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

    // Ends the scan before `word`, which is HIERARCHY. The scan is plain if it begins a line.
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
    const char* checked_;  // words before this one are checked
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
