#pragma once

#include <cstdint>
#include <string>

namespace support {

// Makes a random BVH file: joints that branch, roots with a single child, detached joints, zero
// offsets, joints of six, three and fewer channels, any rotation order, repeated names, a joint
// with the name of the model. Right angles are frequent. The same seed gives the same text on every
// machine.
std::string RandomBvh(std::uint64_t seed);

}  // namespace support
