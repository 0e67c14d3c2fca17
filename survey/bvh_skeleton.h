// What a BVH file says, as its readers hand it on: joints and the header of the motion, with where
// in the text they are. Lines count from 1.
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
// 0, 1 or 2 for x, y or z.
constexpr std::size_t AxisOf(BvhChannel channel) {
    return static_cast<std::size_t>(channel) % 3;
}

// Where a word is in the text.
struct BvhSpot {
    const char* at = nullptr;
    std::uint32_t line = 0;
};

struct BvhJoint {
    std::string name;  // UTF-8, without blanks; empty for end sites
    std::uint32_t parent = kNoParent;
    bool isEndSite = false;
    bool isRoot = false;  // its keyword is ROOT
    bool hasOffset = false;
    bool hasChannels = false;  // a CHANNELS, be it of none
    bool hasJoints = false;    // joints or end sites below it
    std::uint8_t channelCount = 0;
    std::array<BvhChannel, kMostChannels> channels{};  // in the file's order
    std::size_t firstValue = 0;                        // of its channels in a row
    std::array<double, 3> offset{};
    std::array<std::string_view, 3> offsetWords{};  // empty: the value must be written
    BvhSpot keyword;
    BvhSpot brace;
    BvhSpot offsetAt;
    BvhSpot channelsAt;
    BvhSpot end;                    // of its closing brace, where it has one
    std::int64_t indentation = -1;  // columns before its keyword; -1 where a word is before it

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
    bool HasRisingRotations() const;
};

// Two or three rotations, x before y before z.
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
    bool present = false;  // MOTION, or what follows it
    BvhSpot at;
    BvhSpot framesAt;  // the count or, without one, its keyword
    BvhSpot timeAt;
    std::optional<std::int64_t> frames;  // a count beyond 64 bits is the largest one
    std::optional<double> frameTime;     // seconds; a number, of whatever size
    std::string timeWord;                // as it was written, where the plug-in reads it so
    BvhSpot rows;                        // after the header
};

// A HIERARCHY and its motion.
struct BvhSection {
    BvhSpot at;
    std::vector<BvhJoint> joints;  // in the file's order, so that parents come first
    std::size_t channels = 0;      // values in a row
    BvhMotionHeader motion;
    std::size_t bracesOpen = 0;  // joints without a closing brace
    // Closing braces glued to numbers, which the plug-in passes over with the number.
    std::size_t bracesAfterNumbers = 0;
    BvhSpot firstBraceAfterNumber;
};

}  // namespace survey
