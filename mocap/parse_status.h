// Status codes that are used only inside the importers. They mean success, but a caller must
// distinguish them from Zelk::status::kOk. They are never returned to the host.
#pragma once

#include <cstdint>

namespace mocap {

// A parser reached the end of the file.
inline constexpr std::int32_t kEndOfFile = 1;
// A node has no rotation channel at all, and none was added to it. Only a node that has one or two
// rotation channels gets the missing ones.
inline constexpr std::int32_t kNoRotation = 1;

}  // namespace mocap
