#include "survey/bvh_header_reader.h"

#include <limits>
#include <string>

#include "survey/codes.h"
#include "survey/number_word.h"
#include "survey/quoted_word.h"

namespace survey {
namespace {

// A frame time outside of this range is reported as odd.
constexpr double kLongestFrame = 2.0;      // seconds
constexpr double kShortestFrame = 0.5e-3;  // seconds

class HeaderReader {
  public:
    HeaderReader(BvhWords& words, BvhSection& section, FindingList& findings)
        : words_(words), section_(section), motion_(section.motion), findings_(findings) {}

    void Read() {
        motion_.framesAt = motion_.at;
        const char* const first = words_.Peek().text.data();
        while (ReadFrames() || ReadTime()) {
        }
        const BvhWord& ahead = words_.Peek();
        motion_.rows = ahead.Spot();
        if (ahead.IsEnd()) motion_.rows.at = words_.End();
        const bool hasRows = !ahead.IsEnd() && !EqualsWord(ahead.text, "HIERARCHY");
        isEmpty_ = !hasRows && ahead.text.data() == first;
        if (!timeSeen_)
            motion_.timeAt = framesSeen_ ? motion_.framesAt : hasRows ? motion_.rows : motion_.at;
    }

    // Whether neither a header nor rows follow MOTION. In that case CompareFrameCount reports the
    // missing rows, and the missing header is not reported.
    bool IsEmpty() const { return isEmpty_; }

    void ReportFrames() {
        if (motion_.frames) return;
        findings_.Add({codes::kFramesMissing, Severity::Note, motion_.framesAt.at,
                       framesSeen_ ? "\"Frames:\" is followed by " + Quoted(framesText_) +
                                         " where a whole number was expected; the rows are "
                                         "counted"
                                   : "\"Frames:\" is missing; the rows are counted",
                       "", true});
    }

    void ReportTime(bool rateStated) {
        const bool stated = motion_.frameTime && *motion_.frameTime > 0.0;
        if (rateStated) return;
        if (!stated) {
            findings_.Add({codes::kFrameTimeMissing, Severity::Warning, motion_.timeAt.at,
                           (timeSeen_ ? "the frame time is " + Quoted(timeText_) +
                                            " where a number of seconds above 0 was expected"
                                      : std::string("\"Frame Time:\" is missing")) +
                               "; 30 frames per second are assumed, --fps states the rate",
                           "", true});
        } else if (*motion_.frameTime > kLongestFrame || *motion_.frameTime < kShortestFrame) {
            findings_.Add({codes::kFrameTimeOdd, Severity::Warning, motion_.timeAt.at,
                           "a frame of " + motion_.timeWord +
                               " seconds is likely a rate or milliseconds; it is kept, --fps "
                               "states the rate",
                           ""});
        }
    }

  private:
    // Parses "Frames:" and the count. Returns false if the next word is not this keyword, or if the
    // keyword was parsed before.
    bool ReadFrames() {
        const BvhWord keyword = words_.Peek();
        if (framesSeen_ || !BeginsWithWord(keyword.text, "Frames")) return false;
        std::string_view value = keyword.text.substr(6);
        if (!value.empty() && value[0] != ':') return false;
        words_.Next();
        framesSeen_ = true;
        if (!early_.IsEnd()) ReportKeyword(early_, R"("Frame Time:" after "Frames:")");
        if (value != ":") ReportKeyword(keyword, R"("Frames:")");
        const BvhWord count = ReadValue(keyword, value);
        motion_.framesAt = (count.IsEnd() ? keyword : count).Spot();
        motion_.frames = WholeNumber(count.text);
        framesText_ = count.text;
        return true;
    }

    // Parses "Frame Time:" and the seconds. Returns false if the next word does not begin this
    // keyword, or if the keyword was parsed before.
    bool ReadTime() {
        const BvhWord keyword = words_.Peek();
        if (timeSeen_) return false;
        std::string_view value;
        bool exact = false;
        if (BeginsWithWord(keyword.text, "FrameTime")) {
            value = keyword.text.substr(9);
            words_.Next();
        } else if (EqualsWord(keyword.text, "Frame")) {
            words_.Next();
            if (!BeginsWithWord(words_.Peek().text, "Time")) {
                ReportKeyword(keyword, R"("Frame Time:")");
                return true;
            }
            value = words_.Next().text.substr(4);
            exact = value == ":";
        } else {
            return false;
        }
        if (!exact)
            ReportKeyword(keyword, R"("Frame Time:")");
        else if (!framesSeen_)
            early_ = keyword;
        timeSeen_ = true;
        const BvhWord time = ReadValue(keyword, value);
        motion_.timeAt = (time.IsEnd() ? keyword : time).Spot();
        timeText_ = time.text;
        ReadSeconds(time);
        return true;
    }

    // Reads the value of a keyword. `rest` is the part of the keyword's word that begins with the
    // colon. If text follows the colon in `rest`, that text is the value. If not, but another word
    // follows on the line, that word is the value. If the line ends there, the value may be a
    // number that is alone on the next line. In a motion of one channel, such a number may be a
    // row, so it is not taken. If there is no value, the result's text is empty.
    BvhWord ReadValue(const BvhWord& keyword, std::string_view rest) {
        BvhWord value = keyword;
        if (!rest.empty() && rest[0] == ':') rest.remove_prefix(1);
        value.text = rest;
        if (!rest.empty()) return value;
        if (words_.Peek().text == ":" && words_.Peek().line == keyword.line) words_.Next();
        const BvhWord ahead = words_.Peek();
        value.text = {};
        if (ahead.IsEnd()) return value;
        double number = 0.0;
        const bool isNumber = ClassifyWord(ahead.text, number) != WordKind::Other;
        if (ahead.line != keyword.line && (section_.channels == 1 || !isNumber || !IsAlone(ahead)))
            return value;
        return words_.Next();
    }

    bool IsAlone(const BvhWord& word) const {
        const char* at = word.text.data() + word.text.size();
        while (at < words_.End() && IsBlank(*at))
            ++at;
        return at == words_.End() || IsLineEnd(*at);
    }

    // Returns the whole number that the word is, or nullopt. Digits after a point are accepted if
    // all of them are zero. A number beyond 64 bits becomes the largest or the smallest one.
    static std::optional<std::int64_t> WholeNumber(std::string_view word) {
        const std::size_t point = word.find('.');
        if (point != std::string_view::npos &&
            word.find_first_not_of('0', point + 1) != std::string_view::npos)
            return std::nullopt;
        if (word.find_first_not_of("+-0123456789.") != std::string_view::npos) return std::nullopt;
        double value = 0.0;
        if (ClassifyWord(word.substr(0, point), value) != WordKind::Number) return std::nullopt;
        constexpr double kMost = 9e18;
        if (value >= kMost) return std::numeric_limits<std::int64_t>::max();
        if (value <= -kMost) return std::numeric_limits<std::int64_t>::min();
        return static_cast<std::int64_t>(value);
    }

    void ReadSeconds(const BvhWord& time) {
        double value = 0.0;
        const WordKind kind = ClassifyWord(time.text, value);
        if (kind != WordKind::Number && kind != WordKind::Comma) return;
        motion_.frameTime = value;
        if (kind == WordKind::Number) {
            motion_.timeWord = time.text;
        } else {
            const std::size_t comma = time.text.find(',');
            motion_.timeWord = time.text;
            motion_.timeWord[comma] = '.';
            if (!findings_.AddAgain(codes::kNumberComma, Severity::Warning))
                findings_.Add({codes::kNumberComma, Severity::Warning, time.text.data(),
                               "the frame time " + Quoted(time.text) +
                                   " has a decimal comma; it is read as " + motion_.timeWord,
                               "", true});
        }
    }

    void ReportKeyword(const BvhWord& found, const std::string& expected) {
        if (findings_.AddAgain(codes::kMotionKeyword, Severity::Note)) return;
        const char* last = found.text.data();
        while (last < words_.End() && !IsLineEnd(*last) && last - found.text.data() < 40)
            ++last;
        std::string_view text(found.text.data(),
                              static_cast<std::size_t>(last - found.text.data()));
        findings_.Add({codes::kMotionKeyword, Severity::Note, found.text.data(),
                       Quoted(text) + " is read as it is meant; " + expected + " was expected", "",
                       true});
    }

    BvhWords& words_;
    BvhSection& section_;
    BvhMotionHeader& motion_;
    FindingList& findings_;
    bool framesSeen_ = false;
    bool timeSeen_ = false;
    bool isEmpty_ = false;
    // The keyword "Frame Time:", if no "Frames:" comes before it. This order is reported only if
    // "Frames:" follows later.
    BvhWord early_;
    std::string_view framesText_;
    std::string_view timeText_;
};

}  // namespace

void ReadMotionHeader(BvhWords& words, BvhSection& section, bool rateStated,
                      FindingList& findings) {
    HeaderReader reader(words, section, findings);
    reader.Read();
    if (reader.IsEmpty()) return;
    reader.ReportFrames();
    reader.ReportTime(rateStated);
}

}  // namespace survey
