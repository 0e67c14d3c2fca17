#include "take/commands.h"

#include <array>

#include "plugin/contract.h"

namespace take {
namespace {

constexpr std::string_view kClip = "add a clip of the motion";
constexpr std::string_view kNulls = "build nulls, not chains of bones";
constexpr std::string_view kFromParent = "start a chain of bones at its parent joint";
constexpr std::string_view kToLastBone = "put a chain's effector under its last bone";
constexpr std::string_view kGroup = "put the moving objects in a group";

constexpr auto kBiovisionArguments = [] {
    using namespace plugin::biovision;
    std::array<ArgumentInfo, kArgumentCount> infos{};
    infos[kFile] = {ArgumentKind::Text, "the .bvh file"};
    infos[kAddClip].meaning = kClip;
    infos[kUseNulls].meaning = kNulls;
    infos[kChainFromParentJoint].meaning = kFromParent;
    infos[kEffectorToLastBone].meaning = kToLastBone;
    infos[kCreateGroup].meaning = kGroup;
    return infos;
}();

constexpr auto kAcclaimArguments = [] {
    using namespace plugin::acclaim;
    std::array<ArgumentInfo, kArgumentCount> infos{};
    infos[kSkeletonFile] = {ArgumentKind::Text, "the .asf file"};
    infos[kMotionFile] = {ArgumentKind::Text, "the .amc file; empty for the skeleton alone"};
    infos[kApplyLimits].meaning = "clamp values to the limits of the skeleton";
    infos[kOverrideLength].meaning = "multiply lengths by the next argument, not the file's factor";
    infos[kLengthMultiplier] = {ArgumentKind::Real, "the factor on lengths"};
    infos[kAddClip].meaning = kClip;
    infos[kUseNulls].meaning = kNulls;
    infos[kChainFromParentJoint].meaning = kFromParent;
    infos[kEffectorToLastBone].meaning = kToLastBone;
    infos[kCreateGroup].meaning = kGroup;
    return infos;
}();

constexpr FormatInfo kInfos[kFormatCount] = {
    {"Biovision BVH", false, plugin::kBiovisionCommand, plugin::biovision::kFile + 1,
     kBiovisionArguments},
    {"Acclaim ASF/AMC", true, plugin::kAcclaimCommand, plugin::acclaim::kMotionFile + 1,
     kAcclaimArguments},
};

}  // namespace

std::span<const FormatInfo> Formats() {
    return kInfos;
}

const FormatInfo& InfoOf(Format format) {
    return kInfos[static_cast<std::size_t>(format)];
}

const FormatInfo* FindCommand(std::wstring_view command) {
    for (const FormatInfo& info : kInfos)
        if (info.command == command) return &info;
    return nullptr;
}

}  // namespace take
