// The formats of an import and the commands of the plug-in that read them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "take/request.h"

namespace take {

struct FormatInfo {
    std::string_view name;  // "Biovision BVH"
    // Whether it has limits of values and a length of its own, and so the options about them.
    bool hasLimitsAndLengths;
    std::wstring_view command;
    // How many of the command's arguments, the first ones, are texts.
    std::size_t textArguments;
};

const FormatInfo& InfoOf(Format format);
// Null for a name that is no command of the plug-in.
const FormatInfo* FindCommand(std::wstring_view command);

}  // namespace take
