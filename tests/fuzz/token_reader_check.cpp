#include "tests/fuzz/token_reader_check.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "textio/string_file.h"

namespace fuzz {
namespace {

constexpr std::size_t kCalls = 8;
constexpr std::size_t kMostTokens = 2000;

class Checker {
  public:
    Checker(std::string_view calls, std::string_view text, const char* separators)
        : calls_(calls), text_(text), separators_(separators) {
        if (!reader_.RegisterWhiteSpaces(separators)) throw RequirementFailed("no separators");
    }

    void Run() {
        const MemoryFile file(text_);
        Require(reader_.ReadFile(file.Path().c_str()) == !text_.empty(), "the file cannot be read");
        if (text_.empty()) return;
        Require(reader_.GetSize() == text_.size(), "the size is wrong");
        for (std::size_t i = 0; i < kMostTokens && !atEnd_; ++i) {
            Call(calls_[i % calls_.size()]);
            CheckPosition();
        }
    }

  private:
    void Call(char call) {
        switch (call & 7) {
            case 0:
            case 1:
                return CheckToken(reader_.GetNextString(), true);
            case 2: {
                const std::uint32_t before = reader_.GetPosition();
                const char* const token = reader_.PeekNextString();
                if (token != nullptr) Require(reader_.GetPosition() == before, "peeking moved");
                // The token is also read, because peeking alone would never move the reader.
                CheckToken(reader_.GetNextString(), true);
                return;
            }
            case 3:
                return CheckNumber<int>(&CStringFile::GetNextInt);
            case 4:
            case 5:
                return CheckNumber<double>(&CStringFile::GetNextFloat);
            case 6:
                return CheckNextLine();
            default:
                return CheckSetPosition(static_cast<unsigned char>(call));
        }
    }

    // The end of the text for a reader at `from`: the next NUL byte or the end of the file.
    std::size_t EndFrom(std::size_t from) const {
        return std::min(text_.find('\0', from), text_.size());
    }

    // Finds the next token at or after `from` by a plain search, and sets `end` to its end.
    std::string Expected(std::size_t from, std::size_t& end) const {
        const std::size_t textEnd = EndFrom(from);
        std::size_t first = from;
        while (first < textEnd && IsSeparator(text_[first]))
            ++first;
        end = first;
        while (end < textEnd && !IsSeparator(text_[end]))
            ++end;
        return std::string(text_.substr(first, end - first));
    }
    bool IsSeparator(char c) const { return c != '\0' && std::strchr(separators_, c) != nullptr; }

    void CheckToken(const char* token, bool moved) {
        std::size_t end = 0;
        const std::string expected = Expected(position_, end);
        Require((token == nullptr) == expected.empty(), "a token is missing or is too many");
        if (token == nullptr) {
            atEnd_ = true;
        } else {
            Require(expected == token, "a wrong token");
        }
        if (moved) position_ = end >= EndFrom(position_) ? text_.size() : end;
    }

    template <class Number>
    void CheckNumber(bool (CStringFile::*next)(Number&)) {
        std::size_t end = 0;
        const std::string expected = Expected(position_, end);
        const auto untouched = static_cast<Number>(-17);
        Number value = untouched;
        if (!(reader_.*next)(value)) {
            Require(value == untouched, "a refused number was written");
            // Like the callers, the check then reads the token, so that the reader moves on.
            if (!expected.empty())
                Require(reader_.GetPosition() == position_, "a refused number moved the reader");
            position_ = std::min<std::size_t>(reader_.GetPosition(), text_.size());
            return CheckToken(reader_.GetNextString(), true);
        }
        Require(!expected.empty(), "a number without a token");
        const auto plain = static_cast<Number>(ByLibrary(expected.c_str(), value));
        // NOLINTNEXTLINE(misc-redundant-expression): a NaN does not equal itself.
        Require(value == plain || (plain != plain && value != value), "a wrong number");
        position_ = end >= EndFrom(position_) ? text_.size() : end;
    }
    static int ByLibrary(const char* text, int) {
        return static_cast<int>(std::strtol(text, nullptr, 10));
    }
    static double ByLibrary(const char* text, double) { return std::strtod(text, nullptr); }

    void CheckNextLine() {
        const std::size_t feed = text_.substr(0, EndFrom(position_)).find('\n', position_);
        const bool more =
            position_ < text_.size() && feed != std::string_view::npos && feed + 1 < text_.size();
        Require(reader_.GotoNextLine() == more, "a line is missing or is too many");
        if (!more) return CheckToken(reader_.GetNextString(), true);
        position_ = feed + 1;
    }

    void CheckSetPosition(std::size_t target) {
        const bool inside = target < text_.size();
        Require(reader_.SetPosition(static_cast<unsigned int>(target)) == inside,
                "a position was accepted or refused wrongly");
        // The reader does not stay at an earlier position, because that could repeat for ever.
        if (inside && target > position_) {
            position_ = target;
        } else {
            reader_.SetPosition(static_cast<unsigned int>(position_));
            if (position_ >= text_.size()) atEnd_ = true;
            position_ = reader_.GetPosition();
            CheckToken(reader_.GetNextString(), true);
        }
    }

    void CheckPosition() {
        const std::size_t position = reader_.GetPosition();
        Require(position <= text_.size(), "the position is beyond the file");
        Require(position == position_, "the position is wrong");
        const std::string_view before = text_.substr(0, position);
        const auto lines = std::count(before.begin(), before.end(), '\n');
        Require(reader_.GetCurrentLine() == static_cast<std::uint32_t>(lines), "a wrong line");
        const std::size_t feed = before.rfind('\n');
        const std::size_t start = feed == std::string_view::npos ? 0 : feed + 1;
        Require(reader_.GetCurrentColumn() == position - start, "a wrong column");
    }

    std::string_view calls_;
    std::string_view text_;
    const char* separators_;
    CStringFile reader_;
    std::size_t position_ = 0;  // where the reader must be
    bool atEnd_ = false;
};

}  // namespace

void CheckTokenReader(std::string_view input) {
    static constexpr const char* kSeparators[] = {"\t\r\n ", "\t\r\n (),", ",", "\n"};
    if (input.size() <= kCalls) return;
    const auto choice = static_cast<unsigned char>(input[0]);
    Checker(input.substr(1, kCalls - 1), input.substr(kCalls), kSeparators[choice % 4]).Run();
}

}  // namespace fuzz
