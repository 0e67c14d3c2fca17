// The formats of an import and the commands of the plug-in that read them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "take/request.h"

namespace take {

struct FormatInfo {
    std::string_view name;  // "Biovision BVH"
    // Whether skeletons of this format have joint limits and a length multiplier. An
    // import's options can change both.
    bool hasLimitsAndLengths;
    std::wstring_view command;  // the name of the plug-in's command
    // The number of arguments that are texts. They are the first ones of the command.
    std::size_t textArguments;
};

const FormatInfo& InfoOf(Format format);
// Finds the format that this command of the plug-in reads; null if there is none.
const FormatInfo* FindCommand(std::wstring_view command);

}  // namespace take
