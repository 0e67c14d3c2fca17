#include "survey/bvh_rows.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "survey/bvh_hierarchy_reader.h"
#include "survey/bvh_lines.h"
#include "survey/codes.h"
#include "survey/quoted_word.h"

namespace survey {
namespace {

// A motion is refused if more than one row in kRowsForOneBad has a wrong number of values. But one
// such row is accepted in every motion with at least kFewestRowsForOneBad rows.
constexpr std::size_t kRowsForOneBad = 100;
constexpr std::size_t kFewestRowsForOneBad = 10;
// A motion is refused if more than one value in kNotFiniteShare is not a finite number.
constexpr std::size_t kNotFiniteShare = 4;

class RowsReader {
  public:
    RowsReader(const BvhSection& section, std::string_view text, FindingList& findings,
               BvhFrames& frames)
        : section_(section), text_(text), findings_(findings), frames_(frames) {}

    bool Read() {
        read_ = ReadLines(section_.motion.rows, text_.data() + text_.size(), section_.channels);
        frames_.channels = section_.channels;
        frames_.end = read_.end;
        frames_.hasOddWhite = read_.hasOddWhite;
        RemoveText();
        if (!CheckCommas()) return false;
        if (IsStream()) {
            ReadStream();
        } else {
            RemoveCutRow();
            if (!CheckLengths()) return false;
            KeepRows();
        }
        ReportGlued();
        return RepairValues();
    }

  private:
    // Removes and reports the lines that are text and not rows.
    void RemoveText() {
        const auto isText = [](const BvhLine& line) { return line.isText != 0; };
        auto& lines = read_.lines;
        const auto first = std::find_if(lines.begin(), lines.end(), isText);
        if (first == lines.end()) return;
        const char* last = first->at;
        while (last < text_.data() + text_.size() && !IsLineEnd(*last))
            ++last;
        const std::string_view found(first->at, static_cast<std::size_t>(last - first->at));
        const auto count = static_cast<std::size_t>(std::count_if(first, lines.end(), isText));
        findings_.Add({codes::kSurplusText, Severity::Warning, first->at,
                       Quoted(found) + " is no row and no further section; it is passed over", "",
                       true});
        findings_.AddAgain(codes::kSurplusText, Severity::Warning, count - 1);
        isTextBetween_ = !std::all_of(first, lines.end(), isText);
        lines.erase(std::remove_if(first, lines.end(), isText), lines.end());
    }

    bool CheckCommas() {
        if (read_.mixed.count > 0) {
            findings_.Add({codes::kNumberComma, Severity::Error, read_.mixed.at,
                           Quoted(read_.mixed.word) +
                               ": commas and points are mixed in this row, so that neither is "
                               "surely the decimal point; write numbers with a point and part them "
                               "by blanks"});
            findings_.AddAgain(codes::kNumberComma, Severity::Error, read_.mixed.count - 1);
            return false;
        }
        if (read_.commas.count == 0) return true;
        for (std::size_t i = 0; i < read_.lines.size(); ++i) {
            const BvhLine& line = read_.lines[i];
            const bool isCut = i + 1 == read_.lines.size() && line.values < section_.channels;
            if (line.values == section_.channels || isCut) continue;
            findings_.Add({codes::kNumberComma, Severity::Error, line.at,
                           "numbers have commas, and with decimal commas row " +
                               std::to_string(i + 1) + " has " + Values(line.values) +
                               " where the channels ask for " + std::to_string(section_.channels) +
                               "; write numbers with a point and part them by blanks"});
            return false;
        }
        ReportOddValue(codes::kNumberComma, read_.commas,
                       Quoted(read_.commas.word) + " has a decimal comma; it is read so");
        return true;
    }

    // Whether the frames are not one line each. Two conditions must be met. First, most lines have
    // another number of values than there are channels. Second, each line holds one or more whole
    // frames, or every frame is split into lines in the same way. The result is false if a word
    // holds several numbers, or if text comes between rows.
    bool IsStream() const {
        const std::size_t channels = section_.channels;
        const auto& lines = read_.lines;
        const bool isGlued = std::any_of(lines.begin(), lines.end(),
                                         [](const BvhLine& line) { return line.hasGlued != 0; });
        if (isGlued) return false;
        const auto wrong = static_cast<std::size_t>(
            std::count_if(lines.begin(), lines.end(),
                          [&](const BvhLine& line) { return line.values != channels; }));
        if (isTextBetween_ || channels == 0 || 2 * wrong <= lines.size()) return false;
        const bool areWhole = std::all_of(lines.begin(), lines.end(), [&](const BvhLine& line) {
            return line.values % channels == 0;
        });
        if (areWhole) return true;
        std::size_t pattern = 0;  // lines in each frame
        for (std::size_t values = 0; values < channels; ++pattern) {
            if (pattern == lines.size()) return false;
            values += lines[pattern].values;
            if (values > channels) return false;
        }
        if (lines.size() % pattern != 0) return false;
        for (std::size_t i = pattern; i < lines.size(); ++i)
            if (lines[i].values != lines[i - pattern].values) return false;
        return true;
    }

    // Reads value after value and ignores line ends. The plug-in does the same, so this is not
    // reported.
    void ReadStream() {
        read_.notFinite = {};
        for (const BvhLine& line : read_.lines) {
            RowWords words(line.at, text_.data() + text_.size());
            for (std::uint32_t left = line.values; left > 0; --left)
                AddStreamWord(words.Next(), line);
        }
    }

    void AddStreamWord(std::string_view word, const BvhLine& line) {
        const std::size_t index = frames_.values.size() % section_.channels;
        if (index == 0) frames_.rows.push_back({word.data(), line.line, true, false});
        double value = 0.0;
        const WordKind kind = ReadRowWord(word, value);
        frames_.rows.back().isPlain &= kind == WordKind::Number && IsPlainWord(word, value);
        if (std::isnan(value) && read_.notFinite.count++ == 0) {
            read_.notFinite.at = word.data();
            read_.notFinite.word = word;
            read_.notFinite.index = index;
        }
        frames_.values.push_back(value);
    }

    void RemoveCutRow() {
        if (read_.lines.empty() || read_.lines.back().values >= section_.channels) return;
        const BvhLine& cut = read_.lines.back();
        findings_.Add({codes::kRowCut, Severity::Warning, cut.at,
                       "the last row has " + Values(cut.values) + " where the channels ask for " +
                           std::to_string(section_.channels) + "; it is left out",
                       "", true});
        read_.lines.pop_back();
    }

    bool CheckLengths() {
        const auto& lines = read_.lines;
        const auto isBad = [&](const BvhLine& line) { return line.values != section_.channels; };
        const auto first = std::find_if(lines.begin(), lines.end(), isBad);
        if (first == lines.end()) return true;
        const auto bad = static_cast<std::size_t>(std::count_if(first, lines.end(), isBad));
        const std::size_t allowed = std::max<std::size_t>(
            lines.size() / kRowsForOneBad, lines.size() >= kFewestRowsForOneBad ? 1 : 0);
        const bool isRefused = bad > allowed;
        std::string message = "row " + std::to_string(first - lines.begin() + 1) + " has " +
                              Values(first->values) + " where the channels ask for " +
                              std::to_string(section_.channels);
        if (isRefused && read_.hasCounter && bad == lines.size())
            message += "; the first column rises by a constant: a leading counter?";
        message += !isRefused      ? "; the frame holds the one before"
                   : CanBeStream() ? "; --as-is reads on regardless"
                                   : "; correct the rows";
        const Severity severity = isRefused ? Severity::Error : Severity::Warning;
        findings_.Add({codes::kRowLength, severity, first->at, message, "", !isRefused});
        findings_.AddAgain(codes::kRowLength, severity, bad - 1);
        hasBadRows_ = true;
        return !isRefused;
    }

    // Whether the plug-in, which ignores line ends, would find as many values as the header
    // announces.
    bool CanBeStream() const {
        double values = 0.0;
        for (const BvhLine& line : read_.lines)
            values += line.values;
        const auto& frames = section_.motion.frames;
        return frames && *frames >= 0 &&
               values >= static_cast<double>(*frames) * static_cast<double>(section_.channels);
    }

    // Stores one frame for each line. A line with a wrong number of values gets the values of the
    // frame before. If no good line comes before it, it gets the values of the first good line.
    void KeepRows() {
        const auto& lines = read_.lines;
        const auto toRow = [](const BvhLine& line) {
            return BvhRow{line.at, line.line, line.isPlain != 0, line.isSplit != 0};
        };
        frames_.rows.reserve(lines.size());
        if (!hasBadRows_) {
            for (const BvhLine& line : lines)
                frames_.rows.push_back(toRow(line));
            frames_.values = std::move(read_.values);
            return;
        }
        const auto channels = static_cast<std::ptrdiff_t>(section_.channels);
        frames_.values.reserve(lines.size() * section_.channels);
        auto source = std::find_if(lines.begin(), lines.end(), [&](const BvhLine& line) {
            return line.values == section_.channels;
        });
        auto values = read_.values.cbegin();
        for (auto line = lines.begin(); line != lines.end(); ++line) {
            if (line->values == section_.channels && line > source) {
                source = line;
                values += channels;
            }
            BvhRow row = toRow(*source);
            row.line = line->line;
            frames_.rows.push_back(row);
            frames_.values.insert(frames_.values.end(), values, values + channels);
        }
    }

    void ReportGlued() {
        if (read_.glued.count == 0) return;
        ReportOddValue(codes::kNumberGlued, read_.glued,
                       Quoted(read_.glued.word) + " is read as numbers that follow each other");
    }

    void ReportOddValue(std::string_view code, const OddValue& odd, std::string message) {
        const BvhJoint* joint = JointOfValue(section_, odd.index);
        findings_.Add({code, Severity::Warning, odd.at, std::move(message),
                       joint ? joint->name : std::string(), true});
        findings_.AddAgain(code, Severity::Warning, odd.count - 1);
    }

    // Replaces each value that is not finite by the channel's value in the frame before. Before the
    // channel's first finite value, that value is used. If a channel has no finite value, 0 is
    // used. Returns false, and replaces nothing, if too many values are not finite.
    bool RepairValues() {
        const std::size_t count = read_.notFinite.count;
        if (count == 0) return true;
        const BvhJoint* joint = JointOfValue(section_, read_.notFinite.index);
        const bool isRefused = kNotFiniteShare * count > frames_.values.size();
        const Severity severity = isRefused ? Severity::Error : Severity::Warning;
        double value = 0.0;
        const bool isText = ReadRowWord(read_.notFinite.word, value) == WordKind::Other;
        std::string message = Quoted(read_.notFinite.word) + " where a number was expected";
        if (isRefused)
            message += std::string(", and more than a quarter of the values are like that; ") +
                       (isText ? "correct them" : "--as-is reads on regardless");
        else
            message += "; the channel holds its last value";
        findings_.Add({codes::kNumberNotFinite, severity, read_.notFinite.at, std::move(message),
                       joint ? joint->name : std::string(), !isRefused});
        findings_.AddAgain(codes::kNumberNotFinite, severity, count - 1);
        if (isRefused) return false;
        std::vector<double> held(section_.channels, 0.0);
        for (std::size_t i = frames_.values.size(); i-- > 0;)
            if (!std::isnan(frames_.values[i])) held[i % section_.channels] = frames_.values[i];
        for (std::size_t i = 0; i < frames_.values.size(); ++i) {
            double& last = held[i % section_.channels];
            if (std::isnan(frames_.values[i]))
                frames_.values[i] = last;
            else
                last = frames_.values[i];
        }
        return true;
    }

    static std::string Values(std::size_t count) {
        return std::to_string(count) + (count == 1 ? " value" : " values");
    }

    const BvhSection& section_;
    std::string_view text_;
    FindingList& findings_;
    BvhFrames& frames_;
    BvhLines read_;
    bool hasBadRows_ = false;
    bool isTextBetween_ = false;  // whether rows follow after a line of text
};

}  // namespace

bool ReadRows(const BvhSection& section, std::string_view text, FindingList& findings,
              BvhFrames& frames) {
    return RowsReader(section, text, findings, frames).Read();
}

void CompareFrameCount(const BvhSection& section, std::size_t frames, FindingList& findings) {
    const BvhMotionHeader& motion = section.motion;
    const auto found = static_cast<std::int64_t>(frames);
    const bool announces = motion.frames && section.channels > 0;
    const std::string follow = ", and " + std::to_string(frames) +
                               (frames == 1 ? " whole row follows" : " whole rows follow");
    if (announces && (*motion.frames > found || *motion.frames < 0))
        findings.Add({codes::kFramesFewer, Severity::Warning, motion.framesAt.at,
                      "\"Frames:\" announces " + std::to_string(*motion.frames) + follow +
                          "; what is there is imported",
                      "", true});
    else if (announces && *motion.frames < found)
        findings.Add({codes::kFramesMore, Severity::Warning, motion.framesAt.at,
                      "\"Frames:\" announces " + std::to_string(*motion.frames) + follow +
                          "; all of them are imported",
                      "", true});
    if (frames == 0)
        findings.Add({codes::kMotionEmpty, Severity::Note, motion.at.at,
                      "the motion has no rows; the skeleton is imported", "",
                      !motion.frames || *motion.frames != 0});
}

const BvhJoint* JointOfValue(const BvhSection& section, std::size_t value) {
    for (const BvhJoint& joint : section.joints)
        if (value >= joint.firstValue && value < joint.firstValue + joint.channelCount)
            return &joint;
    return nullptr;
}

}  // namespace survey
