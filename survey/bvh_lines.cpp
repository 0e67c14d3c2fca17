#include "survey/bvh_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

#include "survey/bvh_words.h"
#include "survey/source_text.h"
#include "textio/number.h"

namespace survey {
namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint32_t kMostValues = (1U << 28U) - 1;  // the largest BvhLine::values

// Tells which bytes separate words.
constexpr std::array<bool, 256> kSeparators = [] {
    std::array<bool, 256> separators{};
    for (const char c : {' ', '\t', '\v', '\f', '\n', '\r', '\0'})
        separators[static_cast<unsigned char>(c)] = true;
    return separators;
}();

bool IsSeparator(char c) {
    return kSeparators[static_cast<unsigned char>(c)];
}

// Whether a byte separates words in this file, but not for the plug-in.
bool IsOddWhite(char c) {
    return c == '\v' || c == '\f' || c == '\0';
}

// Whether the word is a zero such as "0" or "-0.000". ReadPlainDecimal does not read zeros.
bool IsPlainZero(std::string_view word) {
    if (word.starts_with('-')) word.remove_prefix(1);
    return word.starts_with('0') && word.find_first_not_of("0.") == std::string_view::npos &&
           std::count(word.begin(), word.end(), '.') <= 1;
}

class LinesReader {
  public:
    LinesReader(BvhSpot from, const char* textEnd, std::size_t channels)
        : at_(from.at), end_(textEnd), line_(from.line), channels_(channels) {
        row_.reserve(std::min(channels, static_cast<std::size_t>(textEnd - from.at)));
    }

    BvhLines Read() {
        while (SkipToWord()) {
            lineStart_ = at_;
            if (BeginsSection()) break;
            ReadLine();
        }
        read_.end = {at_, line_};
        read_.hasCounter = counted_ > 2 && counterRises_;
        return std::move(read_);
    }

  private:
    bool SkipToWord() {
        for (; at_ < end_ && IsSeparator(*at_); ++at_) {
            read_.hasOddWhite |= IsOddWhite(*at_);
            if (!IsLineEnd(*at_)) continue;
            if (*at_ == '\r' && at_ + 1 < end_ && at_[1] == '\n') ++at_;
            ++line_;
        }
        return at_ < end_;
    }

    bool BeginsSection() const {
        const char* last = at_;
        while (last < end_ && !IsSeparator(*last))
            ++last;
        return EqualsWord({at_, static_cast<std::size_t>(last - at_)}, "HIERARCHY");
    }

    bool NextWord(std::string_view& word) {
        for (; at_ < end_ && IsSeparator(*at_) && !IsLineEnd(*at_); ++at_)
            read_.hasOddWhite |= IsOddWhite(*at_);
        if (at_ == end_ || IsLineEnd(*at_)) return false;
        const char* const first = at_;
        while (at_ < end_ && !IsSeparator(*at_))
            ++at_;
        word = {first, static_cast<std::size_t>(at_ - first)};
        return true;
    }

    void ReadLine() {
        row_.clear();
        words_ = values_ = 0;
        isPlain_ = true;
        notFinite_ = glued_ = commas_ = otherCommas_ = {};
        bool isText = false;
        std::string_view word;
        while (NextWord(word)) {
            const WordKind kind = AddWord(word);
            if (words_ == 1) isText = kind == WordKind::Other && otherCommas_.count == 0;
        }
        // Words of several numbers, such as "1-2", are split only if the row then has one value for
        // each channel.
        const bool isSplit = values_ != words_ && values_ == channels_;
        if (values_ != words_ && words_ == channels_) Unsplit();
        Finish(isText, isSplit);
    }

    WordKind AddWord(std::string_view word) {
        double value = kNoNumber;
        const char* const end = word.data() + word.size();
        ++words_;
        if (textio::ReadPlainDecimal(word.data(), end, value) == end) {
            AddValue(value);
            return WordKind::Number;
        }
        if (IsPlainZero(word)) {
            AddValue(word[0] == '-' ? -0.0 : 0.0);
            return WordKind::Number;
        }
        const WordKind kind = ReadRowWord(word, value);
        isPlain_ &= kind == WordKind::Number && IsPlainWord(word, value);
        if (kind == WordKind::Glued) {
            Count(glued_, word);
            AddParts(word);
            return kind;
        }
        if (kind == WordKind::Comma) Count(commas_, word);
        if (kind == WordKind::Other && word.find(',') != std::string_view::npos)
            Count(otherCommas_, word);
        if (kind == WordKind::Other || kind == WordKind::NotFinite) Count(notFinite_, word);
        AddValue(value);
        return kind;
    }

    void AddParts(std::string_view word) {
        for (const std::string_view part : SplitGlued(word)) {
            double value = kNoNumber;
            if (ReadRowWord(part, value) != WordKind::Number) Count(notFinite_, part);
            AddValue(value);
        }
    }

    void AddValue(double value) {
        if (row_.size() < channels_) row_.push_back(value);
        ++values_;
    }

    void Count(OddValue& odd, std::string_view word) const {
        if (odd.count++ > 0) return;
        odd.at = word.data();
        odd.word = word;
        odd.index = values_;
    }

    // Reads the line again without splitting words. Words of several numbers become NaN.
    void Unsplit() {
        row_.clear();
        values_ = 0;
        notFinite_ = {};
        RowWords words(lineStart_, at_);
        for (std::string_view word = words.Next(); !word.empty(); word = words.Next()) {
            double value = kNoNumber;
            const WordKind kind = ReadRowWord(word, value);
            if (kind != WordKind::Number && kind != WordKind::Comma) Count(notFinite_, word);
            AddValue(value);
        }
        glued_ = {};
    }

    void Finish(bool isText, bool isSplit) {
        BvhLine line{};
        line.at = lineStart_;
        line.line = line_;
        line.values =
            static_cast<std::uint32_t>(std::min<std::size_t>(values_, kMostValues)) & kMostValues;
        line.isPlain = isPlain_;
        line.isSplit = isSplit;
        line.hasGlued = values_ != words_;
        line.isText = isText;
        read_.lines.push_back(line);
        if (isText) {
            KeepForLater();
            return;
        }
        AddKept();
        Add(read_.commas, commas_);
        CountMixedCommas();
        if (values_ != channels_) {
            CheckCounter();
            return;
        }
        Add(read_.notFinite, notFinite_);
        if (isSplit) Add(read_.glued, glued_);
        if (read_.values.capacity() - read_.values.size() < row_.size()) ReserveRows();
        read_.values.insert(read_.values.end(), row_.begin(), row_.end());
    }

    // Reserves memory for the rows that follow, assuming that they have as many bytes as this row.
    // The memory is limited to a multiple of the rows so far, because the rest of the text may be
    // another section.
    void ReserveRows() {
        constexpr std::size_t kGrowth = 16;
        const std::size_t rows = read_.lines.size();
        const auto left = static_cast<std::size_t>(end_ - lineStart_);
        const auto length = static_cast<std::size_t>(at_ - lineStart_) + 1;
        const std::size_t expected = std::min(left / length + 1, kGrowth * rows);
        read_.values.reserve(read_.values.size() + (expected + expected / 16) * row_.size());
    }

    // Stores a line that begins with text if it has one value for each channel and at least half of
    // the values are numbers. If a row follows, the stored line counts as a row too.
    void KeepForLater() {
        if (values_ != channels_ || 2 * notFinite_.count > values_) return;
        kept_.push_back(read_.lines.size() - 1);
        keptValues_.insert(keptValues_.end(), row_.begin(), row_.end());
        Add(keptNotFinite_, notFinite_);
    }

    // Counts the stored lines that begin with text as rows.
    void AddKept() {
        if (kept_.empty()) return;
        for (const std::size_t line : kept_)
            read_.lines[line].isText = 0;
        read_.values.insert(read_.values.end(), keptValues_.begin(), keptValues_.end());
        Add(read_.notFinite, keptNotFinite_);
        kept_.clear();
        keptValues_.clear();
        keptNotFinite_ = {};
    }

    static void Add(OddValue& sum, const OddValue& more) {
        const std::size_t count = sum.count + more.count;
        if (sum.count == 0) sum = more;
        sum.count = count;
    }

    void CountMixedCommas() {
        const auto length = static_cast<std::size_t>(at_ - lineStart_);
        const bool mixes = commas_.count > 0 && std::memchr(lineStart_, '.', length) != nullptr;
        if (mixes) Add(read_.mixed, commas_);
        if (otherCommas_.count > 0) Add(read_.mixed, otherCommas_);
    }

    // To be called for each line with a wrong number of values. Checks whether the first value
    // rises by a constant from one of these lines to the next.
    void CheckCounter() {
        const double value = row_.empty() ? kNoNumber : row_[0];
        const double step = value - lastCounter_;
        if (counted_ == 1) counterStep_ = step;
        const bool rises =
            values_ == channels_ + 1 &&
            (counted_ == 0 || (step > 0.0 && std::abs(step - counterStep_) <= 1e-6 * counterStep_));
        counterRises_ &= rises;
        lastCounter_ = value;
        ++counted_;
    }

    const char* at_;
    const char* end_;
    std::uint32_t line_;
    std::size_t channels_;
    BvhLines read_;

    // What is known about the line that is being read.
    const char* lineStart_ = nullptr;
    std::vector<double> row_;  // the line's first values, at most `channels_`
    std::size_t words_ = 0;    // number of words so far
    std::size_t values_ = 0;   // number of values so far
    bool isPlain_ = true;
    OddValue notFinite_;
    OddValue glued_;
    OddValue commas_;
    OddValue otherCommas_;  // commas in words that are not numbers

    // Lines that begin with text, and may still count as rows if a row follows.
    std::vector<std::size_t> kept_;  // their indexes in `read_.lines`
    std::vector<double> keptValues_;
    OddValue keptNotFinite_;

    // What is known about the lines with another number of values than there are channels.
    std::size_t counted_ = 0;   // number of these lines
    double lastCounter_ = 0.0;  // the first value of the last of them
    double counterStep_ = 0.0;  // the difference of the first values of the first two
    // Whether all of them have one value too many, and their first values rise by a constant.
    bool counterRises_ = true;
};

}  // namespace

std::string_view RowWords::Next() {
    while (at_ < end_ && IsSeparator(*at_))
        ++at_;
    const char* const first = at_;
    while (at_ < end_ && !IsSeparator(*at_))
        ++at_;
    return {first, static_cast<std::size_t>(at_ - first)};
}

WordKind ReadRowWord(std::string_view word, double& value) {
    value = kNoNumber;
    return ClassifyWord(word, value);
}

BvhLines ReadLines(BvhSpot from, const char* textEnd, std::size_t channels) {
    return LinesReader(from, textEnd, channels).Read();
}

}  // namespace survey
