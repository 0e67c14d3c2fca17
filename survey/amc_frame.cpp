#include "survey/amc_frame.h"

#include <algorithm>
#include <array>

#include "survey/acclaim_words.h"
#include "survey/amc_header.h"
#include "survey/encoding.h"
#include "survey/number_word.h"
#include "text/utf8.h"

namespace survey {
namespace {

// Tells which bytes separate words. Commas do not, because they may be decimal commas.
constexpr std::array<bool, 256> kBreaks = [] {
    std::array<bool, 256> breaks{};
    for (const char c : {' ', '\t', '\v', '\f', '\r', '\n', '(', ')'})
        breaks[static_cast<unsigned char>(c)] = true;
    return breaks;
}();

bool IsBreak(char c) {
    return kBreaks[static_cast<unsigned char>(c)];
}

bool BeginsNumber(std::string_view word) {
    const char c = word[0];
    return (c >= '0' && c <= '9') || c == '-' || c == '+' || c == '.';
}

}  // namespace

std::uint32_t AmcBones::Find(std::string_view name) const {
    const std::uint32_t bone = text::IsValidUtf8(name)
                                   ? skeleton_.names.Find(name)
                                   : skeleton_.names.Find(Windows1252ToUtf8(name));
    return bone == kNoBone && EqualsLower(name, "root") && !skeleton_.Root().name.empty() ? 0
                                                                                          : bone;
}

void AmcFrameReader::Read(const char* at, AmcFrame& frame) {
    frame.at = at;
    frame.hasNumber = false;
    frame.isOdd = false;
    frame.words.clear();
    frame.rows.clear();
    frame.keywords.clear();
    at_ = at;
    const std::string_view word = NextWord(frame);
    frame.hasNumber = IsFrameNumber(word, frame.number);
    if (!frame.hasNumber) at_ = at;
    atLineStart_ = !frame.hasNumber;
    frame.end = nullptr;
    while (!frame.end)
        ReadWord(frame);
    lastRows_.clear();
    for (const AmcRow& row : frame.rows)
        lastRows_.push_back({row.name, row.bone});
}

// Returns the next word without the commas around it; an empty word means the end of the text. Sets
// `atLineStart_` if a line end comes before the word.
std::string_view AmcFrameReader::NextWord(AmcFrame& frame) {
    for (;;) {
        for (; at_ < end_ && (IsBreak(*at_) || *at_ == ','); ++at_) {
            atLineStart_ |= IsLineEnd(*at_);
            frame.isOdd |= *at_ == '\v' || *at_ == '\f';
        }
        if (at_ == end_ || *at_ != '#') break;
        at_ = std::find_if(at_, end_, IsLineEnd);
        frame.isOdd = true;
    }
    const char* const first = at_;
    at_ = std::find_if(at_, end_, IsBreak);
    std::string_view word(first, static_cast<std::size_t>(at_ - first));
    while (!word.empty() && word.back() == ',')
        word.remove_suffix(1);
    return word;
}

// Reads the next word of the frame. If the word is a keyword, also skips the rest of its line. Sets
// `frame.end` if the frame has ended.
void AmcFrameReader::ReadWord(AmcFrame& frame) {
    const std::string_view word = NextWord(frame);
    const bool startsLine = atLineStart_;
    atLineStart_ = false;
    if (word.empty()) {
        frame.end = end_;
    } else if (word[0] == ':') {
        frame.keywords.push_back(word);
        frame.isOdd = true;
        at_ = std::find_if(at_, end_, IsLineEnd);
    } else if (startsLine && BeginsNumber(word)) {
        if (BeginsFrame(word, frame))
            frame.end = word.data();
        else if (bones_.Find(word) != kNoBone || frame.rows.empty())
            frame.end = AddRow(word, frame) ? nullptr : word.data();
        else
            AddWord(word, frame);
    } else if (startsLine ||
               (!BeginsNumber(word) && FindBone(word, frame.rows.size()) != kNoBone)) {
        frame.end = AddRow(word, frame) ? nullptr : word.data();
    } else {
        AddWord(word, frame);
    }
}

// Whether `word`, a number that begins a line, is the number of a frame. It must be a whole number.
// If the current frame already has rows, the rest of the line must be empty or begin with a name.
bool AmcFrameReader::BeginsFrame(std::string_view word, const AmcFrame& frame) {
    double number = 0.0;
    if (!IsFrameNumber(word, number)) return false;
    const char* next = at_;
    while (next < end_ && (IsBreak(*next) || *next == ',') && !IsLineEnd(*next))
        ++next;
    if (next == end_ || IsLineEnd(*next) || *next == '#') return true;
    return frame.rows.empty() || !BeginsNumber({next, 1});
}

// Adds a row to the frame and returns true. There is one exception: the frame already has at least
// two rows, and the new row is of the same bone as the first of them. Such a row begins the next
// frame, whose number is missing. It is not added, and the function returns false.
bool AmcFrameReader::AddRow(std::string_view name, AmcFrame& frame) {
    const std::uint32_t bone = FindBone(name, frame.rows.size());
    if (bone != kNoBone && frame.rows.size() > 1 && frame.rows[0].bone == bone) return false;
    // It is odd if the motion calls the root "root" and the skeleton gives it another name.
    frame.isOdd |= bone == 0 && bones_.Skeleton().names.Find(name) != 0;
    frame.rows.push_back({name, bone, frame.words.size(), 0});
    return true;
}

void AmcFrameReader::AddWord(std::string_view word, AmcFrame& frame) {
    if (frame.rows.empty()) {
        frame.isOdd = true;
        return;
    }
    frame.words.push_back(word);
    ++frame.rows.back().count;
}

std::uint32_t AmcFrameReader::FindBone(std::string_view name, std::size_t row) {
    if (row < lastRows_.size() && lastRows_[row].name == name) return lastRows_[row].bone;
    return bones_.Find(name);
}

}  // namespace survey
