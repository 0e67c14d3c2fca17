#include "take/commands.h"

#include "plugin/contract.h"

namespace take {
namespace {

constexpr FormatInfo kInfos[kFormatCount] = {
    {"Biovision BVH", false, plugin::kBiovisionCommand, plugin::biovision::kFile + 1},
    {"Acclaim ASF/AMC", true, plugin::kAcclaimCommand, plugin::acclaim::kMotionFile + 1},
};

}  // namespace

const FormatInfo& InfoOf(Format format) {
    return kInfos[static_cast<std::size_t>(format)];
}

const FormatInfo* FindCommand(std::wstring_view command) {
    for (const FormatInfo& info : kInfos)
        if (info.command == command) return &info;
    return nullptr;
}

}  // namespace take
