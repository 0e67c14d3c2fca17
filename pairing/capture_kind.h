// Which files are captures, by their names: the one table of inputs.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pairing {

enum class CaptureKind : std::uint8_t {
    Biovision,  // .bvh: a skeleton and its motion
    Skeleton,   // .asf
    Motion,     // .amc: the motion of a skeleton
};

// By the extension, in upper or lower case; a file that is named ".bvh" has it too. None for a file
// with another extension or without one.
std::optional<CaptureKind> KindOf(std::string_view path);

// "bvh", "asf", "amc"
std::string_view NameOf(CaptureKind kind);

// Whether the file is a skeleton or a motion for one, by its name.
bool IsAcclaim(std::string_view path);

}  // namespace pairing
