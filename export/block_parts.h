// Divides frames between threads that compute whole blocks.
// Internal to export/.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "export/run_parts.h"
#include "math/pose_lanes.h"

namespace exporters {

// Returns how many frames of `bytes` bytes, from 1 on, a thread computes at a time: whole blocks of
// about 1 MiB, or a single block if that is larger. They fit into a cache, and they take so long
// that waiting for the turn of the thread costs little.
inline std::size_t FramesAtOnce(std::size_t bytes) {
    constexpr std::size_t kBytes = std::size_t{1} << 20;
    return std::max<std::size_t>(kBytes / bytes / math::kPoseLanes, 1) * math::kPoseLanes;
}

// Returns, for each part, the index of its first frame and the index after its last one. Each part
// but the last consists of whole blocks, so which frames share a block does not depend on the
// number of threads. There is a part or more, and none is empty unless there is no frame. `threads`
// is passed to PartsFor.
inline std::vector<std::pair<std::size_t, std::size_t>> BlockParts(std::size_t frames,
                                                                   std::size_t joints,
                                                                   std::size_t threads = 0) {
    const std::size_t blocks = (frames + math::kPoseLanes - 1) / math::kPoseLanes;
    const std::size_t count = std::clamp<std::size_t>(PartsFor(frames * joints, threads), 1,
                                                      std::max<std::size_t>(blocks, 1));
    std::vector<std::pair<std::size_t, std::size_t>> parts;
    for (std::size_t part = 0; part < count; ++part)
        parts.emplace_back(part * blocks / count * math::kPoseLanes,
                           std::min((part + 1) * blocks / count * math::kPoseLanes, frames));
    return parts;
}

}  // namespace exporters
