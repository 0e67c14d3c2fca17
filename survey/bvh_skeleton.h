// The records in which the readers store a BVH file: its joints and the headers of its motions, and
// where these are in the text. Line numbers count from 1.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace survey {

inline constexpr std::uint32_t kNoParent = 0xFFFFFFFF;

enum class BvhChannel : std::uint8_t {
    PositionX,
    PositionY,
    PositionZ,
    RotationX,
    RotationY,
    RotationZ,
};
inline constexpr std::size_t kMostChannels = 6;

constexpr bool IsRotation(BvhChannel channel) {
    return channel >= BvhChannel::RotationX;
}
// The axis of a channel: 0, 1 or 2 for x, y or z.
constexpr std::size_t AxisOf(BvhChannel channel) {
    return static_cast<std::size_t>(channel) % 3;
}

// Where a word is in the text.
struct BvhSpot {
    const char* at = nullptr;
    std::uint32_t line = 0;  // 0 if there is no such word
};

struct BvhJoint {
    std::string name;  // UTF-8, without blanks; empty for end sites
    std::uint32_t parent = kNoParent;
    bool isEndSite = false;
    bool isRoot = false;  // whether its keyword is ROOT
    bool hasOffset = false;
    bool hasChannels = false;  // whether it has the keyword CHANNELS, even without channels
    bool hasJoints = false;    // whether it has children, which may be end sites
    std::uint8_t channelCount = 0;
    std::array<BvhChannel, kMostChannels> channels{};  // in the file's order
    std::size_t firstValue = 0;      // index of its first channel's value in a row
    std::array<double, 3> offset{};  // in the file's unit
    // The numbers of OFFSET as words of the text. A word is empty if the plug-in would not read it
    // as the number in `offset`.
    std::array<std::string_view, 3> offsetWords{};
    BvhSpot keyword;
    BvhSpot brace;
    BvhSpot offsetAt;
    BvhSpot channelsAt;
    BvhSpot end;  // the closing brace; `end.at` is null if it is missing
    // Number of columns before the keyword; -1 if the keyword is not the first word of its line.
    std::int64_t indentation = -1;

    bool HasPositions() const {
        for (std::size_t i = 0; i < channelCount; ++i)
            if (!IsRotation(channels[i])) return true;
        return false;
    }
    bool HasRotations() const {
        for (std::size_t i = 0; i < channelCount; ++i)
            if (IsRotation(channels[i])) return true;
        return false;
    }
    // Whether the joint lists two or three rotations, and their axes are in the order x, y, z.
    bool HasRisingRotations() const;
};

inline bool BvhJoint::HasRisingRotations() const {
    std::size_t rotations = 0;
    BvhChannel last = BvhChannel::PositionX;
    for (std::size_t i = 0; i < channelCount; ++i) {
        if (!IsRotation(channels[i])) continue;
        if (channels[i] < last) return false;
        last = channels[i];
        ++rotations;
    }
    return rotations > 1;
}

struct BvhMotionHeader {
    bool present = false;  // whether the section has MOTION, or a header without this keyword
    BvhSpot at;            // the keyword MOTION; if it is missing, the header's first word
    BvhSpot framesAt;      // where the number of frames is, or where it is missing
    BvhSpot timeAt;        // where the frame time is, or where it is missing
    // The number of frames that the header announces; nullopt if it announces none. It may be
    // negative. A number beyond 64 bits becomes the largest or the smallest one.
    std::optional<std::int64_t> frames;
    // In seconds; may be any number, also 0 or negative. Nullopt if the header states none.
    std::optional<double> frameTime;
    std::string timeWord;  // `frameTime` as the file writes it, but always with a decimal point
    BvhSpot rows;          // the first word after the header, or the end of the text
};

// One HIERARCHY and the MOTION that follows it.
struct BvhSection {
    BvhSpot at;                    // the keyword HIERARCHY
    std::vector<BvhJoint> joints;  // in the file's order, so that parents come first
    std::size_t channels = 0;      // number of values that each row should have
    BvhMotionHeader motion;
    std::size_t bracesOpen = 0;  // number of joints without a closing brace
    // Number of closing braces that touch a number before them. The plug-in skips such a brace
    // together with the number.
    std::size_t bracesAfterNumbers = 0;
    BvhSpot firstBraceAfterNumber;  // the first of these braces
};

}  // namespace survey
