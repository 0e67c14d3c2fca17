#include "survey/asf_values.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "survey/codes.h"
#include "survey/number_word.h"
#include "survey/source_findings.h"
#include "textio/ascii.h"
#include "textio/number.h"

namespace survey {
namespace {

std::optional<Dof> DofOf(std::string_view word) {
    if (word.empty()) return std::nullopt;
    const char kind = textio::ToLower(word[0]);
    if (kind == '|' || kind == 'l') return Dof::Length;
    if (word.size() < 2 || (kind != 't' && kind != 'r')) return std::nullopt;
    const char axis = textio::ToLower(word[1]);
    if (axis < 'x' || axis > 'z') return std::nullopt;
    return static_cast<Dof>((kind == 'r' ? 3 : 0) + axis - 'x');
}

// Reads one limit, which may be infinite. Returns nullopt if the word is not a number. `kind` and
// `value` are what ClassifyWord says about the word.
std::optional<AsfNumber> LimitOf(std::string_view word, WordKind kind, double value) {
    if (kind == WordKind::Number) return AsfNumber{value, word};
    if (kind != WordKind::NotFinite) return std::nullopt;
    const double infinite = textio::ToDouble(std::string(word).c_str());
    if (!std::isinf(infinite)) return std::nullopt;
    return AsfNumber{infinite, infinite > 0.0 ? "inf" : "-inf"};
}

std::string Quoted(std::string_view word) {
    return "\"" + std::string(word) + "\"";
}

}  // namespace

bool IsDofWord(std::string_view word) {
    return word.size() == 2 && DofOf(word).has_value();
}

bool AsfValues::Fail(const AsfWord& at, const std::string& message) {
    if (!findings_.AddAgain(codes::kNumberBad, Severity::Error))
        findings_.Add({codes::kNumberBad, Severity::Error, at.text.data(), message,
                       bone_ ? *bone_ : std::string()});
    words_.SkipLine();
    return false;
}

bool AsfValues::FailCount(const AsfWord& keyword, const std::string& what, std::size_t found,
                          std::size_t expected) {
    const AsfWord& next = words_.Peek();
    const std::string wanted =
        std::to_string(expected) + (expected == 1 ? " number is" : " numbers are") + " expected";
    if (found < expected && !next.IsEnd() && !next.startsLine)
        return Fail(next, Quoted(next.text) + " is no number; for " + what + " " + wanted);
    return Fail(keyword, what + " has " + std::to_string(found) +
                             (found == 1 ? " number" : " numbers") + " where " + wanted);
}

bool AsfValues::ReadNumbers(const AsfWord& keyword, const std::string& what,
                            std::span<AsfNumber> numbers) {
    std::size_t count = 0;
    AsfWord glued;
    for (;;) {
        const AsfWord word = words_.Peek();
        double value = 0.0;
        const WordKind kind = ClassifyWord(word.text, value);
        if (word.IsEnd() || kind == WordKind::Other || kind == WordKind::Comma) break;
        if (kind == WordKind::NotFinite)
            return Fail(word, Quoted(word.text) + " is no finite number, as " + what + " needs");
        std::vector<std::string_view> parts = {word.text};
        if (kind == WordKind::Glued) {
            parts = SplitGlued(word.text);
            if (glued.IsEnd()) glued = word;
        }
        for (const std::string_view part : parts) {
            if (count < numbers.size()) {
                ClassifyWord(part, value);
                numbers[count] = {value, part};
            }
            ++count;
        }
        words_.Next();
    }
    if (count != numbers.size()) return FailCount(keyword, what, count, numbers.size());
    if (!glued.IsEnd())
        findings_.Add({codes::kNumberGlued, Severity::Warning, glued.text.data(),
                       Quoted(glued.text) + " is read as numbers that follow each other",
                       bone_ ? *bone_ : std::string(), true});
    return true;
}

bool AsfValues::ReadLimits(const AsfWord& keyword, std::vector<AsfNumber>& limits) {
    limits.clear();
    for (;;) {
        const AsfWord word = words_.Peek();
        double value = 0.0;
        const WordKind kind = ClassifyWord(word.text, value);
        const bool isOther = kind == WordKind::Other || kind == WordKind::Comma;
        if (word.IsEnd() || (isOther && word.startsLine)) break;
        const std::optional<AsfNumber> limit = LimitOf(word.text, kind, value);
        if (!limit) return Fail(word, Quoted(word.text) + " is no number, as a limit must be");
        limits.push_back(*limit);
        words_.Next();
    }
    if (limits.size() % 2 == 0) return true;
    return Fail(keyword, "the limits are " + std::to_string(limits.size()) +
                             " numbers, where each degree of freedom has a pair");
}

bool AsfValues::ReadAxisOrder(const AsfWord& keyword, std::array<char, 3>& order) {
    const AsfWord word = words_.Peek();
    std::string letters = ToLowerText(word.text);
    std::sort(letters.begin(), letters.end());
    if (letters != "xyz") {
        const bool isThere = !word.IsEnd() && !word.startsLine;
        return Fail(isThere ? word : keyword,
                    (isThere ? Quoted(word.text) + " is no order of axes"
                             : std::string("the order of the axes is missing")) +
                        "; a word such as XYZ is expected");
    }
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<char>(textio::ToLower(word.text[i]) - 32);
    words_.Next();
    return true;
}

bool AsfValues::ReadDofs(const AsfWord& keyword, bool isRoot, AsfBone& bone) {
    while (!words_.Peek().IsEnd() && !words_.Peek().startsLine) {
        const AsfWord word = words_.Next();
        const std::optional<Dof> dof = DofOf(word.text);
        if (!dof || (isRoot && *dof == Dof::Length))
            return Fail(word, Quoted(word.text) + " after " + Quoted(keyword.text) +
                                  " is no degree of freedom; " +
                                  (isRoot ? "tx ty tz rx ry rz" : "rx ry rz tx ty tz l") +
                                  " are known");
        if (bone.Has(*dof)) return Fail(word, Quoted(word.text) + " is given twice");
        bone.dof.push_back(*dof);
        if (textio::ToLower(word.text[0]) != 'l') continue;
        bone.hasLetterLength = true;
        findings_.Add({codes::kDofLength, Severity::Note, word.text.data(),
                       "the degree of freedom \"l\" is the bone's length, which the plug-in "
                       "knows as a bar",
                       bone_ ? *bone_ : std::string(), true});
    }
    return true;
}

std::string AsfValues::ReadName() {
    const AsfWord& word = words_.Peek();
    if (word.IsEnd() || word.startsLine) return {};
    return NameAsUtf8(words_.Next().text, findings_);
}

}  // namespace survey
