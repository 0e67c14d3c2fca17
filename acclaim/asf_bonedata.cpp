// Parses the bones of an ASF file.
#include <algorithm>

#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "math/angles.h"
#include "mocap/parse_status.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

// bones = { "begin" bone }
std::int32_t AcclaimParser::HandleBoneData() {
    for (;;) {
        const std::uint32_t position = stringFile.GetPosition();
        const char* const token = GetNextAccString();
        if (token == nullptr) return mocap::kEndOfFile;
        if (token[0] == ':') {
            stringFile.SetPosition(position);
            return kOk;
        }
        if (!EqualsIgnoringCase(token, "begin"))
            return Fail(kInvalidData, L"Invalid parameter in :bonedata");
        const std::int32_t status = HandleBoneBegin();
        if (status < 0) return status;
    }
}

// bone = { "id" n | "name" name | "direction" x y z | "length" number | "axis" x y z axes
//        | "dof" channels | "limits" limits | unknown to the end of its line } "end"
std::int32_t AcclaimParser::HandleBoneBegin() {
    MOCAPMODEL* const bone = AppendNode();
    if (bone == nullptr) return kOutOfMemory;
    for (;;) {
        const char* const token = GetNextAccString();
        if (token == nullptr) return Fail(kUnexpectedEnd, L"Expected bonedata parameters");
        if (EqualsIgnoringCase(token, "end")) break;
        const std::int32_t status = ParseBoneParameter(*bone, token);
        if (status < 0) return status;
    }
    if (!bone->name) return Fail(kInvalidData, L"Missing name for :bonedata");
    bone->length *= facts.lengthMultiplier;
    ConvertToDegrees(bone->orientation);
    return kOk;
}

std::int32_t AcclaimParser::ParseBoneParameter(MOCAPMODEL& bone, const char* token) {
    static constexpr const wchar_t* kExpected[] = {L"Expected direction x value",
                                                   L"Expected direction y value",
                                                   L"Expected direction z value"};
    if (EqualsIgnoringCase(token, "id")) {
        int id = 0;
        if (!stringFile.GetNextInt(id))
            return Fail(kInvalidData, L"Expected an integer for :bonedata.id");
        bone.boneId = static_cast<std::uint32_t>(id);
    } else if (EqualsIgnoringCase(token, "name")) {
        return ParseBoneName(bone);
    } else if (EqualsIgnoringCase(token, "direction")) {
        return ParseVector(bone.direction, kExpected);
    } else if (EqualsIgnoringCase(token, "length")) {
        if (!stringFile.GetNextFloat(bone.length))
            return Fail(kInvalidData, L"Expected length float value");
    } else if (EqualsIgnoringCase(token, "axis")) {
        return ParseBoneAxis(bone);
    } else if (EqualsIgnoringCase(token, "dof")) {
        return ParseDof(bone);
    } else if (EqualsIgnoringCase(token, "limits")) {
        return ParseLimits(bone);
    } else {
        SkipLine();
    }
    return kOk;
}

std::int32_t AcclaimParser::ParseBoneName(MOCAPMODEL& bone) {
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kInvalidData, L"Expected a string for :bonedata.name");
    bone.name = CopyText(token);
    return bone.name ? kOk : FailForMemory();
}

std::int32_t AcclaimParser::ParseBoneAxis(MOCAPMODEL& bone) {
    static constexpr const wchar_t* kExpected[] = {
        L"Expected axis float value", L"Expected axis float value", L"Expected axis float value"};
    std::int32_t status = ParseVector(bone.orientation, kExpected);
    if (status < 0) return status;
    const char* order = nullptr;
    status = ParseAxisOrder(order, L"Unknown :bonedata.axis order");
    if (status < 0) return status;
    ConvertToXYZ(bone.orientation, order);
    return kOk;
}

// limits = { lower upper }
// There is one pair for each channel that the bone has when this function is called.
std::int32_t AcclaimParser::ParseLimits(MOCAPMODEL& bone) {
    for (CHANNELS& channel : bone.channels) {
        if (channel.type == kEmptySlot) break;
        std::int32_t status = ParseLimit(channel.minLimit, channel.hasMinLimit);
        if (status >= 0) status = ParseLimit(channel.maxLimit, channel.hasMaxLimit);
        if (status < 0) return status;
        if (facts.degrees || !IsRotation(channel.type)) continue;
        channel.minLimit *= math::kDegreesPerRadian;
        channel.maxLimit *= math::kDegreesPerRadian;
    }
    return kOk;
}

// limit = number | "inf" | "-inf"
// GetNextFloat reads "inf" and "-inf" too, and stores them as infinite numbers.
std::int32_t AcclaimParser::ParseLimit(double& limit, bool& hasLimit) {
    hasLimit = stringFile.GetNextFloat(limit);
    if (hasLimit) return kOk;
    const char* const token = stringFile.GetNextString();
    const bool isInfinite =
        token != nullptr && (EqualsIgnoringCase(token, "inf") || EqualsIgnoringCase(token, "-inf"));
    return isInfinite ? kOk : Fail(kInvalidData, L"Expected limits float value");
}
