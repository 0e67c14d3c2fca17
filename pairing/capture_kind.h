// Tells from the names of files which of them are captures.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace pairing {

enum class CaptureKind : std::uint8_t {
    Biovision,  // .bvh: a skeleton with its motion
    Skeleton,   // .asf: an Acclaim skeleton
    Motion,     // .amc: the motion of an Acclaim skeleton
};

// The kind of a file by its extension, in any letter case; a file that is named ".bvh" has this
// extension. None for another extension or without one.
std::optional<CaptureKind> KindOf(std::string_view path);

// "bvh", "asf" or "amc".
std::string_view NameOf(CaptureKind kind);

// Whether the file is an Acclaim skeleton or motion, by its extension.
bool IsAcclaim(std::string_view path);

}  // namespace pairing
