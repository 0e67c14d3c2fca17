// Status codes that only the importers use. They are successes that a caller must distinguish from
// Zelk::status::kOk. The host never gets them.
#pragma once

#include <cstdint>

namespace mocap {

// A parser reached the end of the file. This is a success.
inline constexpr std::int32_t kEndOfFile = 1;
// A node has no rotation channel, so there was nothing to complete.
inline constexpr std::int32_t kNoRotation = 1;

}  // namespace mocap
