#include "take/commands.h"

#include "plugin/contract.h"

namespace take {
namespace {

constexpr FormatInfo kBiovision = {"Biovision BVH", false, plugin::kBiovisionCommand,
                                   plugin::biovision::kFile + 1};
constexpr FormatInfo kAcclaim = {"Acclaim ASF/AMC", true, plugin::kAcclaimCommand,
                                 plugin::acclaim::kMotionFile + 1};

}  // namespace

const FormatInfo& InfoOf(Format format) {
    return format == Format::Acclaim ? kAcclaim : kBiovision;
}

const FormatInfo* FindCommand(std::wstring_view command) {
    for (const FormatInfo* info : {&kBiovision, &kAcclaim})
        if (info->command == command) return info;
    return nullptr;
}

}  // namespace take
