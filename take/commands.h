// The formats of an import and the commands of the plug-in that read them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "take/request.h"

namespace take {

struct FormatInfo {
    std::string_view name;  // "Biovision BVH"
    // Whether its skeletons have joint limits and a length multiplier, which options can change.
    bool hasLimitsAndLengths;
    std::wstring_view command;  // the name of the plug-in's command
    // The command's first arguments are texts; this is how many of them.
    std::size_t textArguments;
};

const FormatInfo& InfoOf(Format format);
// Returns null where the plug-in has no command of that name.
const FormatInfo* FindCommand(std::wstring_view command);

}  // namespace take
