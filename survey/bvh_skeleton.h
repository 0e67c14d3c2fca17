// What the readers return from a BVH file: joints and the header of the motion, and where in the
// text they are. Lines count from 1.
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
    bool hasChannels = false;  // there is a CHANNELS, even one without channels
    bool hasJoints = false;    // has children, which may be end sites
    std::uint8_t channelCount = 0;
    std::array<BvhChannel, kMostChannels> channels{};  // in the file's order
    std::size_t firstValue = 0;                        // index of its first channel in a row
    std::array<double, 3> offset{};                    // in the file's unit
    // The numbers of OFFSET as they are in the text; empty if the plug-in would not read them so.
    std::array<std::string_view, 3> offsetWords{};
    BvhSpot keyword;
    BvhSpot brace;
    BvhSpot offsetAt;
    BvhSpot channelsAt;
    BvhSpot end;  // its closing brace; null if it is missing
    std::int64_t indentation =
        -1;  // columns before its keyword; -1 if that does not begin its line

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
    // Whether it lists two or three rotations, x before y before z.
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
    bool present = false;  // MOTION is there, or it is missing before a header
    BvhSpot at;
    BvhSpot framesAt;                    // where the count of frames is, or where it is missing
    BvhSpot timeAt;                      // where the frame time is, or where it is missing
    std::optional<std::int64_t> frames;  // a count beyond 64 bits becomes the largest one
    std::optional<double> frameTime;     // seconds; may be any number, also 0 or negative
    std::string timeWord;                // `frameTime` as it was written, with a decimal point
    BvhSpot rows;                        // the first word after the header
};

// One HIERARCHY and the MOTION that follows it.
struct BvhSection {
    BvhSpot at;
    std::vector<BvhJoint> joints;  // in the file's order, so that parents come first
    std::size_t channels = 0;      // values in a row
    BvhMotionHeader motion;
    std::size_t bracesOpen = 0;  // joints without a closing brace
    // Number of closing braces that touch a number. The plug-in skips them with the number.
    std::size_t bracesAfterNumbers = 0;
    BvhSpot firstBraceAfterNumber;  // the first of these
};

}  // namespace survey
