// Reads the OFFSET and the CHANNELS between a joint's braces.
#include <algorithm>
#include <array>
#include <string>

#include "survey/bvh_hierarchy_reader.h"
#include "survey/codes.h"
#include "survey/number_word.h"
#include "survey/quoted_word.h"

namespace survey {
namespace {

constexpr std::array<std::string_view, kMostChannels> kChannelNames = {
    "Xposition", "Yposition", "Zposition", "Xrotation", "Yrotation", "Zrotation"};

// Returns the index of the channel in kChannelNames, or kMostChannels if the word is no channel.
std::size_t ChannelOf(std::string_view word) {
    std::size_t index = 0;
    while (index < kMostChannels && !EqualsWord(word, kChannelNames[index]))
        ++index;
    return index;
}

}  // namespace

// Parses "OFFSET" x y z.
bool BvhHierarchyReader::ReadOffset() {
    BvhJoint& joint = section_->joints[current_];
    const BvhWord keyword = Next();
    if (joint.hasOffset)
        return Refuse(
            codes::kHierarchyWord, keyword.text.data(),
            "a second OFFSET of " + JointLabel(*section_, joint) + "; remove one of them");
    joint.hasOffset = true;
    joint.offsetAt = keyword.Spot();
    const bool isLate = joint.hasChannels || joint.hasJoints;
    if (isLate && !findings_.AddAgain(codes::kOffsetMissing, Severity::Note))
        findings_.Add({codes::kOffsetMissing, Severity::Note, keyword.text.data(),
                       "the OFFSET of " + JointLabel(*section_, joint) + " comes after its " +
                           (joint.hasChannels ? "CHANNELS" : "joints") + "; it is put in order",
                       joint.name, true});
    std::size_t count = 0;
    bool commas = false;
    bool points = false;
    std::uint32_t line = keyword.line;
    while (!IsBodyWord() && !(count == 3 && IsWordOfAnotherLine(line))) {
        line = words_.Peek().line;
        if (!ReadOffsetWord(joint, count, Next(), commas, points)) return false;
    }
    if (count != 3)
        return Refuse(
            codes::kNumberBad, keyword.text.data(),
            "OFFSET has " + std::to_string(count) + " numbers where 3 were expected; correct it");
    if (commas && points)
        return Refuse(codes::kNumberComma, keyword.text.data(),
                      "OFFSET has numbers with a decimal comma and with a point; write all of them "
                      "with a point");
    if (commas && !findings_.AddAgain(codes::kNumberComma, Severity::Warning))
        findings_.Add({codes::kNumberComma, Severity::Warning, keyword.text.data(),
                       "the numbers of OFFSET are written with a decimal comma; they are read so",
                       joint.name, true});
    return true;
}

// Whether the next word is on another line than `line` and is neither a number nor a channel. Such
// a word ends a list of numbers or channels that is already complete.
bool BvhHierarchyReader::IsWordOfAnotherLine(std::uint32_t line) const {
    const BvhWord& word = words_.Peek();
    double value = 0.0;
    return word.line != line && ChannelOf(word.text) == kMostChannels &&
           ClassifyWord(word.text, value) == WordKind::Other;
}

// Reads a word of an OFFSET: one number, or several that only their signs separate.
bool BvhHierarchyReader::ReadOffsetWord(BvhJoint& joint, std::size_t& count, const BvhWord& word,
                                        bool& commas, bool& points) {
    double value = 0.0;
    const WordKind kind = ClassifyWord(word.text, value);
    commas |= kind == WordKind::Comma;
    points |= word.text.find('.') != std::string_view::npos;
    const auto store = [&](std::string_view text, bool asWritten) {
        if (count < 3) {
            joint.offset[count] = value;
            joint.offsetWords[count] = asWritten ? text : std::string_view();
        }
        ++count;
    };
    if (kind == WordKind::Number || kind == WordKind::Comma) {
        store(word.text, kind == WordKind::Number && IsPlainWord(word.text, value));
        if (count <= 3) return true;
        return Refuse(codes::kNumberBad, word.text.data(),
                      "a fourth number, " + Quoted(word.text) +
                          ", follows OFFSET, which has three; remove it");
    }
    if (kind != WordKind::Glued)
        return Refuse(codes::kNumberBad, word.text.data(),
                      Quoted(word.text) + " where a number of OFFSET was expected; correct it");
    for (const std::string_view part : SplitGlued(word.text)) {
        if (ClassifyWord(part, value) != WordKind::Number)
            return Refuse(codes::kNumberBad, part.data(),
                          Quoted(part) + " is too large for a number of OFFSET; correct it");
        store(part, IsPlainWord(part, value));
    }
    if (!findings_.AddAgain(codes::kNumberGlued, Severity::Warning))
        findings_.Add({codes::kNumberGlued, Severity::Warning, word.text.data(),
                       Quoted(word.text) + " is read as numbers that follow each other", joint.name,
                       true});
    return true;
}

// Parses "CHANNELS" count { channel }.
bool BvhHierarchyReader::ReadChannels() {
    BvhJoint& joint = section_->joints[current_];
    const BvhWord keyword = Next();
    if (joint.hasChannels)
        return Refuse(
            codes::kChannelsBad, keyword.text.data(),
            "a second CHANNELS of " + JointLabel(*section_, joint) + "; remove one of them");
    joint.hasChannels = true;
    joint.channelsAt = keyword.Spot();
    joint.firstValue = section_->channels;
    const BvhWord count = IsBodyWord() ? keyword : Next();
    std::size_t names = 0;
    std::uint32_t line = count.line;
    for (; !IsBodyWord(); ++names) {
        const bool isEnough = count.text == std::to_string(names);
        if (isEnough && IsWordOfAnotherLine(line)) break;
        const BvhWord word = Next();
        line = word.line;
        const std::size_t index = ChannelOf(word.text);
        if (index == kMostChannels)
            return Refuse(codes::kChannelsBad, word.text.data(),
                          Quoted(word.text) +
                              " is no channel; Xposition, Yposition, Zposition, Xrotation, "
                              "Yrotation or Zrotation was expected; correct it");
        const auto channel = static_cast<BvhChannel>(index);
        const auto* const end = joint.channels.begin() + joint.channelCount;
        if (std::find(joint.channels.cbegin(), end, channel) != end)
            return Refuse(codes::kChannelsBad, word.text.data(),
                          Quoted(word.text) +
                              " is listed twice; a joint has each channel once; "
                              "correct the list");
        joint.channels[joint.channelCount++] = channel;
    }
    section_->channels += joint.channelCount;
    return CountChannels(count, names);
}

bool BvhHierarchyReader::CountChannels(const BvhWord& count, std::size_t names) {
    if (count.text == std::to_string(names)) return true;
    double value = 0.0;
    const bool isNumber = ClassifyWord(count.text, value) == WordKind::Number;
    if (isNumber && value == static_cast<double>(names)) return true;
    if (!isNumber)
        return Refuse(codes::kChannelsBad, count.text.data(),
                      "CHANNELS is followed by " + Quoted(count.text) +
                          " where the number of channels was expected; correct it");
    return Refuse(codes::kChannelsBad, count.text.data(),
                  "CHANNELS announces " + Quoted(count.text) + " and is followed by " +
                      std::to_string(names) + (names == 1 ? " name" : " names") +
                      "; write the count that the rows have values for");
}

}  // namespace survey
