// The formats of an import and the commands of the plug-in that read them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "take/request.h"

namespace take {

enum class ArgumentKind : std::uint8_t { Text, Boolean, Real };

// One argument of a command.
struct ArgumentInfo {
    ArgumentKind kind = ArgumentKind::Boolean;
    std::string_view meaning;  // for users: "add a clip of the motion"
};

struct FormatInfo {
    std::string_view name;  // "Biovision BVH"
    // Whether skeletons of this format have joint limits and a length multiplier. An
    // import's options can change both.
    bool hasLimitsAndLengths;
    std::wstring_view command;  // the name of the plug-in's command
    // The number of arguments that are texts. They are the first ones of the command.
    std::size_t textArguments;
    std::span<const ArgumentInfo> arguments;  // all arguments of the command, in order
};

// All formats, in the order of Format.
std::span<const FormatInfo> Formats();

const FormatInfo& InfoOf(Format format);
// Finds the format that this command of the plug-in reads; null if there is none.
const FormatInfo* FindCommand(std::wstring_view command);

}  // namespace take
