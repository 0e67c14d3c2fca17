#include "survey/acclaim_words.h"

#include <algorithm>

#include "survey/number_word.h"
#include "textio/ascii.h"
#include "textio/number.h"

namespace survey {
namespace {

constexpr bool IsPlugInSeparator(char c) {
    return c == '\t' || c == '\r' || c == '\n' || c == ' ' || c == '(' || c == ')' || c == ',';
}

}  // namespace

bool EqualsLower(std::string_view word, std::string_view lower) {
    return std::equal(word.begin(), word.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return textio::ToLower(a) == b; });
}

std::string ToLowerText(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), textio::ToLower);
    return lower;
}

bool AsfWord::Is(std::string_view lower) const {
    return EqualsLower(text, lower);
}

AsfWord AsfWords::Next() {
    const AsfWord word = next_;
    Advance(false);
    return word;
}

void AsfWords::SkipLine() {
    while (!next_.IsEnd() && !next_.startsLine)
        Advance(false);
}

void AsfWords::MoveTo(const char* at, bool startsLine) {
    at_ = at;
    Advance(startsLine);
}

void AsfWords::Advance(bool startsLine) {
    for (;;) {
        for (; at_ < end_ && IsAsfSeparator(*at_); ++at_)
            startsLine |= IsLineEnd(*at_);
        if (at_ == end_ || *at_ != '#') break;
        at_ = std::find_if(at_, end_, IsLineEnd);
    }
    const char* const last = std::find_if(at_, end_, IsAsfSeparator);
    next_ = {{at_, static_cast<std::size_t>(last - at_)}, startsLine};
    at_ = last;
}

std::string_view PlugInWords::NextRaw() {
    at_ = std::find_if_not(at_, end_, IsPlugInSeparator);
    const char* const first = at_;
    at_ = std::find_if(at_, end_, IsPlugInSeparator);
    return {first, static_cast<std::size_t>(at_ - first)};
}

std::string_view PlugInWords::Next() {
    for (;;) {
        const std::string_view word = NextRaw();
        if (!word.starts_with('#')) return word;
        if (!SkipLine()) return {end_, 0};
    }
}

bool PlugInWords::NextNumber(double& value) {
    const char* const before = at_;
    const std::string_view word = NextRaw();
    const double number = textio::ToDouble(std::string(word).c_str());
    if (!word.empty() && IsPlainWord(word, number)) {
        value = number;
        return true;
    }
    at_ = before;
    return false;
}

bool PlugInWords::NextWholeNumber(int& value) {
    const char* const before = at_;
    const std::string_view word = NextRaw();
    const int number = textio::ToInt(std::string(word).c_str());
    if (!word.empty() && IsPlainWord(word, number)) {
        value = number;
        return true;
    }
    at_ = before;
    return false;
}

bool PlugInWords::SkipLine() {
    const char* const lineEnd = std::find(at_, end_, '\n');
    if (lineEnd == end_) return false;
    at_ = lineEnd + 1;
    return true;
}

bool PlugInWords::AtLineEnd() const {
    PlugInWords ahead = *this;
    const std::string_view next = ahead.Next();
    return next.empty() || std::find(at_, next.data(), '\n') != next.data();
}

}  // namespace survey
