// Finds out from the name of a file whether it has a skeleton, a motion or both.
// Part of the public surface of the library.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "text/api.h"

namespace pairing {

enum class CaptureKind : std::uint8_t {
    Biovision,  // .bvh: a skeleton with its motion
    Skeleton,   // .asf: an Acclaim skeleton
    Motion,     // .amc: the motion of an Acclaim skeleton
};

// Returns the kind that the file's extension, in any letter case, stands for. A ".gz" after the
// extension is ignored: "walk.bvh.gz" is a packed ".bvh". A file whose whole name is ".bvh" also
// has this extension. Returns nullopt for any other extension or for none.
ZKMOCAP_API std::optional<CaptureKind> KindOf(std::string_view path);

// Returns "bvh", "asf" or "amc".
ZKMOCAP_API std::string_view NameOf(CaptureKind kind);

// Whether the file's extension is that of an Acclaim skeleton or motion.
bool IsAcclaim(std::string_view path);

}  // namespace pairing
