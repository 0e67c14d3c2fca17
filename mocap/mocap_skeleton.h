#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "mocap/mocap_model.h"

// The result of the parsers: the nodes of one skeleton. After a motion was parsed, the channels of
// the nodes also have keys, one for each frame.
struct MocapSkeleton {
    std::vector<std::unique_ptr<MOCAPMODEL>> models;  // in the order of the file
    std::uint32_t frameCount = 0;    // the number of keys of a channel that has keys
    std::uint32_t channelCount = 0;  // how many imported channels the file lists
};
