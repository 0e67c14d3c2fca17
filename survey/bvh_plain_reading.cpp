#include "survey/bvh_plain_reading.h"

#include <limits>
#include <string>

#include "survey/bvh_words.h"
#include "survey/number_word.h"
#include "textio/number.h"

namespace survey {
namespace {

constexpr std::string_view kChannelNames[] = {"Xposition", "Yposition", "Zposition",
                                              "Xrotation", "Yrotation", "Zrotation"};

bool IsSeparator(char c) {
    return c == '\t' || c == '\r' || c == '\n' || c == ' ';
}

// Reads the text by the plug-in's grammar and compares each value with the section's.
class PlainReader {
  public:
    PlainReader(const BvhSection& section, std::string_view text)
        : section_(section), textStart_(text.data()) {
        const char* const end = text.data() + text.size();
        const bool hasMotion = section.motion.present;
        at_ = section.at.at;
        last_ = hasMotion ? section.motion.rows.at : end;
    }

    bool Agrees() {
        if (!IsReached() || !Keyword("HIERARCHY")) return false;
        for (;;) {
            const std::string_view word = Next();
            if (word.empty()) return Ended();
            if (word == "}") {
                if (current_ == kNoParent) return false;
                current_ = section_.joints[current_].parent;
                --depth_;
            } else if (EqualsWord(word, "MOTION")) {
                return Header();
            } else if (EqualsWord(word, "ROOT") || EqualsWord(word, "JOINT")) {
                if (!Joint(false)) return false;
            } else if (!EqualsWord(word, "End") || !Keyword("Site") || !Joint(true)) {
                return false;
            }
        }
    }

  private:
    // Whether the plug-in finds the section's first word. If a NUL byte is before that word, the
    // text ends there for the plug-in. If a vertical tab or a form feed is directly before the
    // word, the plug-in takes it for a part of the word.
    bool IsReached() const {
        const char* before = section_.at.at;
        while (before > textStart_ && IsSeparator(before[-1]))
            --before;
        return before == textStart_ ||
               (before[-1] != '\0' && before[-1] != '\v' && before[-1] != '\f');
    }

    std::string_view Next() {
        while (at_ < last_ && IsSeparator(*at_))
            ++at_;
        const char* const first = at_;
        while (at_ < last_ && *at_ != '\0' && !IsSeparator(*at_))
            ++at_;
        return {first, static_cast<std::size_t>(at_ - first)};
    }

    bool Keyword(std::string_view keyword) { return EqualsWord(Next(), keyword); }

    bool Ended() const {
        return at_ == last_ && !section_.motion.present && depth_ == 0 &&
               next_ == section_.joints.size();
    }

    bool Joint(bool isEndSite) {
        if (next_ == section_.joints.size()) return false;
        const BvhJoint& joint = section_.joints[next_];
        if (joint.isEndSite != isEndSite || joint.parent != current_) return false;
        if (!isEndSite && Next() != joint.name) return false;
        if (Next() != "{" || !Keyword("OFFSET")) return false;
        for (std::size_t axis = 0; axis < 3; ++axis)
            if (!Float(joint.offset[axis])) return false;
        current_ = next_++;
        ++depth_;
        const char* const before = at_;
        if (!Keyword("CHANNELS")) {
            at_ = before;
            return joint.channelCount == 0;
        }
        return Channels(joint);
    }

    bool Channels(const BvhJoint& joint) {
        if (joint.firstValue != values_) return false;
        int count = 0;
        if (!Int(count) || (count < 1 ? 0 : count) != joint.channelCount) return false;
        for (std::size_t i = 0; i < joint.channelCount; ++i)
            if (!Keyword(kChannelNames[static_cast<std::size_t>(joint.channels[i])])) return false;
        values_ += joint.channelCount;
        return true;
    }

    bool Header() {
        const BvhMotionHeader& motion = section_.motion;
        if (!motion.present || next_ != section_.joints.size()) return false;
        int frames = 0;
        if (!Keyword("Frames:") || !Int(frames) || !motion.frames || frames < 0 ||
            frames != *motion.frames)
            return false;
        if (frames > 0 && section_.channels == 0) return false;
        if (!Keyword("Frame") || !Keyword("Time:") || !motion.frameTime || *motion.frameTime <= 0.0)
            return false;
        return Float(*motion.frameTime) && Next().empty() && at_ == last_;
    }

    bool Int(int& value) {
        const std::string word(Next());
        value = textio::ToInt(word.c_str());
        return value != 0 || word.starts_with('0') || word.starts_with("-0");
    }

    bool Float(double expected) {
        const std::string word(Next());
        return !word.empty() && textio::ToDouble(word.c_str()) == expected &&
               IsPlainWord(word, expected);
    }

    const BvhSection& section_;
    const char* textStart_;
    const char* at_;
    const char* last_;
    std::uint32_t current_ = kNoParent;
    std::uint32_t next_ = 0;  // index of the next joint
    std::size_t depth_ = 0;
    std::size_t values_ = 0;
};

}  // namespace

bool IsReadPlainly(const BvhSection& section, std::string_view text) {
    return PlainReader(section, text).Agrees();
}

}  // namespace survey
