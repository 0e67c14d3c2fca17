#include "survey/amc_header.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/acclaim_words.h"
#include "survey/codes.h"
#include "survey/number_word.h"
#include "survey/text_kind.h"

namespace survey {
namespace {

class HeaderReader {
  public:
    explicit HeaderReader(FindingList& findings)
        : text_(findings.Source().Text()), findings_(findings), words_(text_) {}

    AmcHeader Read() {
        header_.frames = text_.data() + text_.size();
        for (double number = 0.0; !words_.Peek().IsEnd();) {
            const AsfWord word = words_.Next();
            if (word.IsKeyword()) {
                ReadKeyword(word);
            } else if (word.startsLine && IsFrameNumber(word.text, number)) {
                header_.frames = word.text.data();
                break;
            } else {
                Refuse(word);
                return header_;
            }
        }
        if (!header_.isMotion && (header_.frames == text_.data() + text_.size() || !HasRow()))
            Refuse(words_.Peek());
        return header_;
    }

  private:
    void ReadKeyword(const AsfWord& word) {
        if (word.Is(":fully-specified")) {
            header_.isMotion = true;
            isSpecified_ = true;
        } else if (word.Is(":degrees") || word.Is(":radians")) {
            header_.isMotion = true;
            header_.degrees = word.Is(":degrees");
            header_.unitAt = word.text.data();
        } else if (word.Is(":samples-per-second")) {
            header_.isMotion = true;
            ReadRate(word);
        } else if (word.Is(":force-all-joints-be-3dof")) {
            header_.has3Dof = true;
            if (!findings_.AddAgain(codes::kBoneWithoutDof, Severity::Note))
                findings_.Add({codes::kBoneWithoutDof, Severity::Note, word.text.data(),
                               "every bone is said to have three values; the first ones are those "
                               "of its own dof",
                               "", true});
        } else {
            if (!findings_.AddAgain(codes::kKeywordUnknown, Severity::Note))
                findings_.Add({codes::kKeywordUnknown, Severity::Note, word.text.data(),
                               "\"" + std::string(word.text) +
                                   "\" is not known in an AMC file; it is passed over",
                               "", true});
            words_.SkipLine();
        }
    }

    void ReadRate(const AsfWord& keyword) {
        const AsfWord word = words_.Peek();
        double value = 0.0;
        if (word.IsEnd() || word.IsKeyword() || word.startsLine) return;
        words_.Next();
        if (ClassifyWord(word.text, value) != WordKind::Number || value <= 0.0) return;
        header_.rateText = word.text;
        header_.rate = value;
        header_.rateAt = keyword.text.data();
        header_.isRateLate = isSpecified_;
    }

    // Whether the next line begins with a name, as the rows of a motion do. A file without keywords
    // may begin with a number although it is not a motion.
    bool HasRow() {
        AsfWords words = words_;
        const char first = words.Peek().text.empty() ? '0' : words.Peek().text[0];
        return words.Peek().startsLine && (first < '0' || first > '9') && first != '-' &&
               first != '.' && first != '+';
    }

    void Refuse(const AsfWord& word) {
        const std::string found =
            word.IsEnd() ? std::string("the text ends")
                         : "\"" + std::string(word.text.substr(0, kLongestShown)) + "\" was found";
        findings_.Add({codes::kNotAmc, Severity::Error,
                       header_.isMotion ? word.text.data() : nullptr,
                       "this is no AMC motion: " + found +
                           " where the number of the first frame "
                           "must be; the file looks like " +
                           std::string(DescribeText(text_))});
    }

    static constexpr std::size_t kLongestShown = 40;

    std::string_view text_;
    FindingList& findings_;
    AsfWords words_;
    AmcHeader header_;
    bool isSpecified_ = false;
};

}  // namespace

bool IsFrameNumber(std::string_view word, double& number) {
    return !word.empty() && ClassifyWord(word, number) == WordKind::Number &&
           number == std::floor(number);
}

AmcHeader ReadAmcHeader(FindingList& findings) {
    return HeaderReader(findings).Read();
}

bool PlugInReadsHeader(std::string_view text, const AmcHeader& header, bool degrees, int& rate) {
    PlugInWords words(text);
    rate = 0;
    std::string_view word = words.Next();
    if (EqualsLower(word, ":samples-per-second")) {
        int number = 0;
        if (words.NextWholeNumber(number) && number > 1) rate = number;
        word = words.Next();
    }
    if (!EqualsLower(word, ":fully-specified")) return false;
    PlugInWords ahead = words;
    const std::string_view unit = ahead.Next();
    if (unit.empty()) return false;
    if (unit[0] == ':') {
        if (!EqualsLower(unit, degrees ? ":degrees" : ":radians")) return false;
        words = ahead;
    }
    // The plug-in does not skip a comment here, but reads it as a line that is not a frame.
    // Therefore NextRaw is called, which does not skip comments.
    const std::string_view first = words.NextRaw();
    return (first.empty() ? text.data() + text.size() : first.data()) == header.frames;
}

}  // namespace survey
