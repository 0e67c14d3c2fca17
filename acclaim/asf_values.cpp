// What the sections of an ASF file have in common: vectors, axis orders, lists of channels.
#include <span>

#include "acclaim/acclaim_import.h"
#include "math/angles.h"
#include "math/rotation_math.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using textio::ToLower;
using namespace Zelk::status;

namespace {

constexpr const char* kAxisOrders[] = {"xyz", "xzy", "yxz", "yzx", "zxy", "zyx"};

struct ChannelToken {
    const char* text;  // of which two characters count at most
    std::uint8_t type;
};
constexpr ChannelToken kRootTokens[] = {
    {"tx", kPositionX}, {"ty", kPositionY}, {"tz", kPositionZ},
    {"rx", kRotationX}, {"ry", kRotationY}, {"rz", kRotationZ},
};
// A bone stands at the end of its parent's, so translations of its own have no place to go.
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

// Looks at the slot behind the one just filled, which holds something only where a line before this
// one put it there. A channel named twice in one line therefore passes.
bool RepeatsChannel(const MOCAPMODEL& node, std::size_t slot) {
    if (slot + 1 == MOCAPMODEL::kSlotCount) return false;
    const std::uint8_t type = node.channels.TypeAt(slot + 1);
    for (std::size_t i = 0; i <= slot; ++i)
        if (node.channels.TypeAt(i) == type) return true;
    return false;
}

}  // namespace

struct CAcclaimImport::ChannelTokens {
    std::span<const ChannelToken> known;
    const wchar_t* unknown;
    const wchar_t* repeated;
};

std::int32_t CAcclaimImport::ParseVector(double* vector, const wchar_t* const* expected) {
    for (int axis = 0; axis < 3; ++axis)
        if (!stringFile.GetNextFloat(vector[axis])) return Fail(kInvalidData, expected[axis]);
    return kOk;
}

std::int32_t CAcclaimImport::ParseAxisOrder(const char*& order, const wchar_t* unknown) {
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kUnexpectedEnd, L"Expected :root.axis order");
    for (const char* known : kAxisOrders) {
        if (!EqualsIgnoringCase(token, known)) continue;
        order = known;
        return kOk;
    }
    return Fail(kInvalidData, unknown);
}

std::int32_t CAcclaimImport::ParseRootOrder(MOCAPMODEL& root) {
    return ParseChannels(root, {kRootTokens, L"Unknown :root.order token",
                                L"Order token defined more than once for the same :root"});
}

std::int32_t CAcclaimImport::ParseDof(MOCAPMODEL& bone) {
    return ParseChannels(bone, {kBoneTokens, L"Unknown :bonedata.dof token",
                                L"DOF token defined more than once for the same :bonedata"});
}

std::int32_t CAcclaimImport::ParseChannels(MOCAPMODEL& node, const ChannelTokens& tokens) {
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
        ++channelCount;
    }
}

void CAcclaimImport::ConvertToXYZ(double* angles, const char* order) const {
    if (EqualsIgnoringCase(order, "xyz")) return;
    const double toRadians = degrees ? math::kRadiansPerDegree : 1.0;
    const double fromRadians = degrees ? math::kDegreesPerRadian : 1.0;
    double turns[3];
    for (int i = 0; i < 3; ++i)
        turns[i] = angles[i] * toRadians;
    RotationToXYZ(turns, order, angles[0], angles[1], angles[2]);
    for (int i = 0; i < 3; ++i)
        angles[i] *= fromRadians;
}

void CAcclaimImport::ConvertToDegrees(double* angles) const {
    if (degrees) return;
    for (int i = 0; i < 3; ++i)
        angles[i] *= math::kDegreesPerRadian;
}
