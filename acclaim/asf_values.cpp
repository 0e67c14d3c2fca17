// Parses the values that several sections of an ASF file contain: vectors, axis orders and lists of
// channels.
#include <span>

#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using textio::ToLower;
using namespace Zelk::status;

namespace {

constexpr const char* kAxisOrders[] = {"xyz", "xzy", "yxz", "yzx", "zxy", "zyx"};

struct ChannelToken {
    const char* text;  // one or two characters; a token of the file only has to begin with them
    std::uint8_t type;
};
constexpr ChannelToken kRootTokens[] = {
    {"tx", kPositionX}, {"ty", kPositionY}, {"tz", kPositionZ},
    {"rx", kRotationX}, {"ry", kRotationY}, {"rz", kRotationZ},
};
// A bone starts at the end of its parent, so its own translations are not imported.
constexpr ChannelToken kBoneTokens[] = {
    {"tx", kIgnoredChannel}, {"ty", kIgnoredChannel}, {"tz", kIgnoredChannel}, {"rx", kRotationX},
    {"ry", kRotationY},      {"rz", kRotationZ},      {"|", kBoneLength},
};

std::uint8_t ChannelTypeOf(std::span<const ChannelToken> known, const char* token) {
    for (const auto& [text, type] : known)
        if (ToLower(token[0]) == text[0] && (text[1] == '\0' || ToLower(token[1]) == text[1]))
            return type;
    return kEmptySlot;
}

// Returns whether one of the slots from 0 to `slot` has the same type as slot `slot + 1`. That slot
// has a type only if an earlier line of the file filled it. A channel that is named twice in one
// line is therefore not found. This is intended.
bool RepeatsChannel(const MOCAPMODEL& node, std::size_t slot) {
    if (slot + 1 == MOCAPMODEL::kSlotCount) return false;
    const std::uint8_t type = node.channels.TypeAt(slot + 1);
    for (std::size_t i = 0; i <= slot; ++i)
        if (node.channels.TypeAt(i) == type) return true;
    return false;
}

}  // namespace

struct AcclaimParser::ChannelTokens {
    std::span<const ChannelToken> known;
    const wchar_t* unknown;
    const wchar_t* repeated;
};

std::int32_t AcclaimParser::ParseVector(double* vector, const wchar_t* const* expected) {
    for (int axis = 0; axis < 3; ++axis)
        if (!stringFile.GetNextFloat(vector[axis])) return Fail(kInvalidData, expected[axis]);
    return kOk;
}

std::int32_t AcclaimParser::ParseAxisOrder(const char*& order, const wchar_t* unknown) {
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kUnexpectedEnd, L"Expected :root.axis order");
    for (const char* known : kAxisOrders) {
        if (!EqualsIgnoringCase(token, known)) continue;
        order = known;
        return kOk;
    }
    return Fail(kInvalidData, unknown);
}

std::int32_t AcclaimParser::ParseRootOrder(MOCAPMODEL& root) {
    return ParseChannels(root, {kRootTokens, L"Unknown :root.order token",
                                L"Order token defined more than once for the same :root"});
}

std::int32_t AcclaimParser::ParseDof(MOCAPMODEL& bone) {
    return ParseChannels(bone, {kBoneTokens, L"Unknown :bonedata.dof token",
                                L"DOF token defined more than once for the same :bonedata"});
}

std::int32_t AcclaimParser::ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens) {
    const std::uint32_t line = stringFile.GetCurrentLine();
    for (std::size_t slot = 0;; ++slot) {
        const std::uint32_t position = stringFile.GetPosition();
        const char* const token = GetNextAccString();
        if (token == nullptr) return kOk;
        if (stringFile.GetCurrentLine() != line) {
            stringFile.SetPosition(position);
            return kOk;
        }
        const std::uint8_t type = ChannelTypeOf(tokens.known, token);
        if (type == kEmptySlot || slot == MOCAPMODEL::kSlotCount)
            return Fail(kInvalidData, tokens.unknown);
        node.channels[slot].type = type;
        if (type == kIgnoredChannel) continue;
        if (RepeatsChannel(node, slot)) return Fail(kInvalidData, tokens.repeated);
        ++skeleton.channelCount;
    }
}

void AcclaimParser::ConvertToXYZ(double* angles, const char* order) const {
    if (EqualsIgnoringCase(order, "xyz")) return;
    const double toRadians = facts.degrees ? math::kRadiansPerDegree : 1.0;
    const double fromRadians = facts.degrees ? math::kDegreesPerRadian : 1.0;
    double turns[3];
    for (int i = 0; i < 3; ++i)
        turns[i] = angles[i] * toRadians;
    RotationToXYZ(turns, order, angles[0], angles[1], angles[2]);
    for (int i = 0; i < 3; ++i)
        angles[i] *= fromRadians;
}

void AcclaimParser::ConvertToDegrees(double* angles) const {
    if (facts.degrees) return;
    for (int i = 0; i < 3; ++i)
        angles[i] *= math::kDegreesPerRadian;
}
