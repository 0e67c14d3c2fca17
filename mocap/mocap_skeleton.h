#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "mocap/mocap_model.h"

// What the parsers make of files: the nodes of one skeleton and, once a motion was parsed, a key
// for each channel and frame.
struct MocapSkeleton {
    std::vector<std::unique_ptr<MOCAPMODEL>> models;  // in the order of the file
    std::uint32_t frameCount = 0;                     // the number of keys in every channel
    std::uint32_t channelCount = 0;                   // how many channels the parser counted
};
