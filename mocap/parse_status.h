// What the importers' own operations return beside the host's status codes: successes that the
// caller must tell from Zelk::status::kOk. Neither reaches the host.
#pragma once

#include <cstdint>

namespace mocap {

// Of a parser: success, and the end of the file was reached.
inline constexpr std::int32_t kEndOfFile = 1;
// Of the completion of a node's rotation channels: the node has none, so there is nothing to do.
inline constexpr std::int32_t kNoRotation = 1;

}  // namespace mocap
